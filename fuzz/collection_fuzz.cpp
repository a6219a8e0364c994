// A collection's list as anybody may have left it. Every name that comes out stays in its folder,
// and a list written from what was read holds the same names.
#include "collections/collection_file.h"
#include "collections/sheet_file_name.h"
#include "platform/error.h"
#include "platform/texts.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace kelvrane {

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

void checkNames(const QStringList& names) {
    for (const QString& name : names) {
        const QString path = SheetPath(QStringLiteral("/loc"), QStringLiteral("N"), name);
        require(path == QStringLiteral("/loc/N_data/") + name);
        require(!name.contains(u'/') && !name.contains(u'\\') && name != u"." && name != u"..");
    }
    QByteArray bytes;
    for (const QString& line : BuildCollectionXml(names))
        bytes += ToFileBytes(line) + "\r\n";
    require(ParseCollection(bytes).names == names);
}

} // namespace

} // namespace kelvrane

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kelvrane;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        checkNames(ParseCollection(bytes).names);
    } catch (const RuntimeError& error) {
        require(error.number == errors::EndOfFile || error.number == errors::DeviceError);
    }
    const QString safe = SafeSheetName(FromFileBytes(bytes));
    require(IsBareFileName(safe) && SafeSheetName(safe) == safe);
    return 0;
}
