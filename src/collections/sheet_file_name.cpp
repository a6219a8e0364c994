#include "collections/sheet_file_name.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace kelvrane {

namespace {

bool isSeparator(QChar character) {
    return character == u'/' || character == u'\\';
}

bool isControl(QChar character) {
    return character.unicode() < 0x20 || character.unicode() == 0x7f;
}

bool isDots(const QString& name) {
    return std::ranges::all_of(name, [](QChar character) { return character == u'.'; });
}

/// The part before the first point, as other systems look at it.
bool isDevice(const QString& name) {
    const QString stem = name.section(u'.', 0, 0).trimmed().toUpper();
    static constexpr std::array<const char*, 4> plain = {"CON", "PRN", "AUX", "NUL"};
    if (std::ranges::any_of(plain,
                            [&](const char* device) { return stem == QLatin1String(device); }))
        return true;
    return stem.size() == 4 && (stem.startsWith(u"COM") || stem.startsWith(u"LPT")) &&
           stem.at(3).unicode() >= u'1' && stem.at(3).unicode() <= u'9';
}

bool isRoot(const QString& path, qsizetype place) {
    return path.size() > 1 && path.at(1) == u':' ? place < 3 : place < 1;
}

} // namespace

bool IsBareFileName(const QString& name) {
    return !name.isEmpty() && !isDots(name) && !isDevice(name) &&
           std::ranges::none_of(name, [](QChar character) {
               return isSeparator(character) || character == u':' || isControl(character);
           });
}

QString SafeSheetName(const QString& name) {
    QString safe = name;
    for (QChar& character : safe)
        if (isControl(character) || QStringView(u"\\/:*?\"<>|").contains(character))
            character = u'_';
    if (isDots(safe.trimmed()) || isDevice(safe)) {
        const qsizetype point = safe.indexOf(u'.');
        safe.insert(isDots(safe.trimmed()) || point < 0 ? safe.size() : point, u'_');
    }
    return safe;
}

void SepPathAndFilenames(const QString& path, QString& folder, QString& file) {
    qsizetype last = -1;
    for (qsizetype place = 0; place < path.size(); ++place)
        if (isSeparator(path.at(place)) && !isRoot(path, place) && QDir(path.left(place)).exists())
            last = place;
    if (last >= 0) {
        folder = path.left(last);
        file = path.mid(last + 1);
        return;
    }
    const bool drive = path.size() > 1 && path.at(1) == u':';
    const bool rooted = path.startsWith(u'/');
    folder = drive ? path.left(2) : rooted ? QStringLiteral("/") : QStringLiteral(".");
    file = path.mid(drive ? 2 : 0);
    while (!file.isEmpty() && isSeparator(file.at(0)))
        file.remove(0, 1);
}

} // namespace kelvrane
