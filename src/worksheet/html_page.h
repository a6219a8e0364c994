// A page of HTML as a stream of events: the library's tolerant parser with the bounds around it
// that a hostile page needs. No tree is built, nothing is fetched, nothing is run.
//
//     struct Titles : HtmlEvents { void opened(const HtmlTag& tag) override; ... } titles;
//     ParseHtml(bytes, titles);
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace kelvrane {

/// Names are in lower case, values UTF-8 with their entities decoded; all of it is valid during the
/// event only.
struct HtmlTag {
    QByteArrayView name;
    const char* const* attributes; ///< name, value, name, value, ...; nullptr: an absent value

    /// The value, empty for an attribute without one; nothing when there is no such attribute.
    std::optional<QByteArrayView> value(QByteArrayView attribute) const;
    bool isBare() const { return !*attributes; }
    bool has(QByteArrayView attribute) const { return value(attribute).has_value(); }
};

class HtmlEvents {
  public:
    virtual ~HtmlEvents() = default;
    /// Each opened element is closed, whether the page says so or not.
    virtual void opened(const HtmlTag& tag) = 0;
    virtual void closed(QByteArrayView name) = 0;
    /// A text comes in as many pieces as the parser likes; blanks as they stand.
    virtual void text(QByteArrayView utf8) = 0;
    /// Of <style>, in pieces too; scripts are passed over.
    virtual void styleText(QByteArrayView utf8) = 0;
    virtual void comment(QByteArrayView utf8) = 0;
    /// Asked as the page is read; false ends the reading.
    virtual bool wantsMore() const = 0;
};

/// The page's bytes as UTF-8 without NULs: UTF-8 or UTF-16 with a mark, else UTF-8 where the bytes
/// are valid, else what the page declares, else Windows-1252.
QByteArray Utf8Page(const QByteArray& bytes);

/// Takes valid UTF-8 without NULs. Time and memory grow with the length of the page and no faster:
/// one that nests too deeply, or is too broken, raises BadArgument with a sentence for the user.
/// What an event raises comes out of here.
void ParseHtml(const QByteArray& utf8, HtmlEvents& events);

} // namespace kelvrane
