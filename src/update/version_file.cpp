#include "update/version_file.h"

#include "collections/sheet_file_name.h"
#include "frame/settings.h"
#include "platform/texts.h"

#include <algorithm>

namespace kelvrane {

namespace {

constexpr UpdateVersion noVersion = {Int16(), Int16(), Int16()};
constexpr qint32 majorWorth = 1000;
constexpr qint32 minorWorth = 50;

std::optional<Int16> field(const QString& text) {
    try {
        return ToInt16(text);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

UpdateVersion parseVersion(const QString& text) {
    const qsizetype first = text.indexOf(u'.');
    if (first < 1)
        return noVersion;
    const qsizetype second = text.indexOf(u'.', first + 1);
    if (second < 0)
        return {field(text.left(first)), std::nullopt, std::nullopt};
    return {field(text.left(first)), field(text.mid(first + 1, second - first - 1)),
            field(text.mid(second + 1))};
}

std::optional<qint32> worth(const UpdateVersion& version) {
    const auto& [major, minor, revision] = version;
    if (!major || !minor || !revision)
        return std::nullopt;
    return *major * majorWorth + *minor * minorWorth + *revision;
}

QString withoutMark(QString line, const char* mark) {
    if (line.endsWith(u'\r'))
        line.chop(1);
    return line.remove(QLatin1String(mark));
}

} // namespace

void ParseVersionFile(const QString& text, UpdateVersion& version, QStringList& names) {
    version = noVersion;
    names.clear();
    const qsizetype first = text.indexOf(u'\n');
    const qsizetype second = first < 0 ? -1 : text.indexOf(u'\n', first + 1);
    if (second < 0)
        return;
    const QString list = withoutMark(text.mid(first + 1, second - first - 1), "NAME:");
    const QStringList listed = list.isEmpty() ? QStringList() : list.split(u';');
    if (!std::ranges::all_of(listed, IsBareFileName))
        return;
    version = parseVersion(withoutMark(text.left(first), "VERSION:"));
    names = listed;
}

bool IsCurrentVersion(const UpdateVersion& offered) {
    const std::optional<qint32> installed =
        worth(parseVersion(RegQueryValue(keys::Main, QStringLiteral("Version"))));
    const std::optional<qint32> there = worth(offered);
    return !installed || !there || *there <= *installed;
}

} // namespace kelvrane
