#include "worksheet/html_page.h"

#include "platform/error.h"
#include "platform/texts.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <type_traits>

namespace kelvrane {

namespace {

// The parser looks through the open elements at each end tag that matches none, and through a tag's
// attributes at each further one. These bounds keep that linear.
constexpr int deepestNesting = 256;
constexpr int mostAttributeSlots =
    4096; ///< the parser counts name and value, and grows by doubling
constexpr qint64 mostRepairs = 20'000'000;
constexpr int repairCost = 40; ///< of a fault in the page, beside the open elements

class PageReader {
  public:
    PageReader(const QByteArray& utf8, HtmlEvents& events)
        : m_rest(utf8), m_events(events), m_parser(htmlNewParserCtxt()) {
        if (!m_parser)
            throw std::bad_alloc();
    }

    void run() {
        static const xmlSAXHandler handler = eventTable();
        *m_parser->sax = handler;
        m_parser->userData = this;
        htmlCtxtReadIO(m_parser.get(), read, nullptr, this, nullptr, "UTF-8",
                       HTML_PARSE_RECOVER | HTML_PARSE_NOWARNING | HTML_PARSE_NONET |
                           HTML_PARSE_NODEFDTD | HTML_PARSE_COMPACT);
        if (m_error)
            std::rethrow_exception(m_error);
    }

  private:
    struct FreeParser {
        void operator()(htmlParserCtxtPtr parser) const { htmlFreeParserCtxt(parser); }
    };

    static xmlSAXHandler eventTable() {
        xmlSAXHandler table = {};
        table.startElement = [](void* self, const xmlChar* name, const xmlChar** attributes) {
            static const char* const none[] = {nullptr};
            const HtmlTag tag{reinterpret_cast<const char*>(name),
                              attributes ? reinterpret_cast<const char* const*>(attributes) : none};
            of(self).forward([&](HtmlEvents& events) { events.opened(tag); });
        };
        table.endElement = [](void* self, const xmlChar* name) {
            of(self).forward(
                [&](HtmlEvents& events) { events.closed(reinterpret_cast<const char*>(name)); });
        };
        table.characters =
            table.ignorableWhitespace = [](void* self, const xmlChar* text, int length) {
                of(self).forward([&](HtmlEvents& events) { events.text({text, length}); });
            };
        table.cdataBlock = [](void* self, const xmlChar* text, int length) {
            const xmlChar* element = of(self).m_parser->name;
            if (element && std::strcmp(reinterpret_cast<const char*>(element), "style") == 0)
                of(self).forward([&](HtmlEvents& events) { events.styleText({text, length}); });
        };
        table.comment = [](void* self, const xmlChar* text) {
            of(self).forward(
                [&](HtmlEvents& events) { events.comment(reinterpret_cast<const char*>(text)); });
        };
        table.error = noteFault;
        return table;
    }

    static PageReader& of(void* self) { return *static_cast<PageReader*>(self); }

    /// No exception may cross the parser's frames.
    template <typename Event>
    void forward(Event&& event) {
        if (!m_done) {
            try {
                event(m_events);
                m_done = !m_events.wantsMore();
            } catch (...) {
                m_error = std::current_exception();
                m_done = true;
            }
        }
        if (m_done)
            xmlStopParser(m_parser.get());
    }

    /// The parser ends at its next event; it can't be stopped while it asks for more.
    void refuse(const char* sentence) {
        if (!m_done)
            m_error = std::make_exception_ptr(RuntimeError(
                errors::BadArgument, QStringLiteral("Kelvrane"), QString::fromLatin1(sentence)));
        m_done = true;
    }

    static void noteFault(void* self, const char*, ...) { of(self).countFault(); }

    void countFault() {
        m_repairs += repairCost + m_parser->nameNr;
        if (m_repairs > mostRepairs)
            refuse("The page is too damaged to be read as a sheet.");
    }

    /// The parser comes back for more after every few thousand bytes.
    static int read(void* context, char* buffer, int length) {
        PageReader& self = of(context);
        if (self.m_parser->nameNr > deepestNesting)
            self.refuse("The page nests its elements too deeply to be read as a sheet.");
        if (self.m_parser->maxatts > mostAttributeSlots)
            self.refuse("The page has an element with too many attributes to be read as a sheet.");
        if (self.m_done)
            return 0;
        const qsizetype count = std::min<qsizetype>(length, self.m_rest.size());
        std::memcpy(buffer, self.m_rest.data(), static_cast<size_t>(count));
        self.m_rest = self.m_rest.sliced(count);
        return static_cast<int>(count);
    }

    QByteArrayView m_rest;
    HtmlEvents& m_events;
    std::unique_ptr<std::remove_pointer_t<htmlParserCtxtPtr>, FreeParser> m_parser;
    std::exception_ptr m_error;
    bool m_done = false;
    qint64 m_repairs = 0;
};

/// What the page declares in its head. UTF-16 can't be declared by bytes that were read as ASCII.
QString declaredText(const QByteArray& bytes) {
    QStringDecoder decoder = QStringDecoder::decoderForHtml(bytes);
    const QByteArray name = QByteArray(decoder.name()).toUpper();
    if (!decoder.isValid() || name.startsWith("UTF") || name.startsWith("ISO-8859-1"))
        return FromFileBytes(bytes);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? FromFileBytes(bytes) : text;
}

} // namespace

std::optional<QByteArrayView> HtmlTag::value(QByteArrayView attribute) const {
    for (const char* const* at = attributes; *at; at += 2)
        if (attribute == *at)
            return QByteArrayView(at[1] ? at[1] : "");
    return std::nullopt;
}

QByteArray Utf8Page(const QByteArray& bytes) {
    QByteArray page;
    if (const auto marked = QStringConverter::encodingForData(bytes))
        page = QString(QStringDecoder(*marked).decode(bytes)).toUtf8();
    else if (QUtf8StringView(bytes).isValidUtf8())
        page = bytes;
    else
        page = declaredText(bytes).toUtf8();
    if (page.contains('\0'))
        page.removeIf([](char byte) { return byte == '\0'; });
    return page;
}

void ParseHtml(const QByteArray& utf8, HtmlEvents& events) {
    PageReader(utf8, events).run();
}

} // namespace kelvrane
