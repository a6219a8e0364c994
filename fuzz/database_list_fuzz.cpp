// SSDBInfo.dat as anybody may have left it: it is read, a line rewritten and a line taken away.
// What the list shows must be what the file holds, and no other line may change.
#include "frame/program_folder.h"
#include "platform/error.h"
#include "platform/ports.h"
#include "timesheets/database_list.h"

#include <QByteArrayList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace kelvrane {

namespace {

/// One file, in memory.
class MemoryFile final : public FileStore {
  public:
    QByteArray bytes;

    bool exists(const QString&) const override { return true; }
    QByteArray read(const QString&) const override { return bytes; }
    void create(const QString&, const QByteArray& fresh) override { m_beside = fresh; }
    void appendAndFlush(const QString&, const QByteArray& more) override { m_beside += more; }
    void replace(const QString&, const QString&) override { bytes = m_beside; }
    void move(const QString&, const QString&) override {}
    void copy(const QString&, const QString&) override {}
    void remove(const QString&, bool) override {}
    void createFolder(const QString&) override {}
    void removeFolder(const QString&) override {}
    QStringList filesIn(const QString&) const override { return {}; }

  private:
    QByteArray m_beside;
};

class NoDialogs final : public Dialogs {
  public:
    BoxAnswer ask(const Box&) override { return BoxAnswer::Ok; }
    std::optional<QString> openFile(const FileQuestion&) override { return {}; }
    std::optional<QString> saveFile(const FileQuestion&) override { return {}; }
};

void require(bool holds) {
    if (!holds)
        std::abort();
}

QByteArrayList linesOf(const QByteArray& bytes) {
    QByteArrayList lines = bytes.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    return lines;
}

bool load() {
    try {
        LoadDatabaseList();
    } catch (const RuntimeError&) {
        return false;
    }
    require(DBCount == Databases().smuiSelectDBs.count());
    return true;
}

void rewriteLine(MemoryFile& file, int number) {
    const QByteArrayList before = linesOf(file.bytes);
    const ListedDatabase database = DatabaseAt(number);
    UpdateDatabaseListLine(Int16(number));
    QByteArrayList after = linesOf(file.bytes);
    require(after.size() == before.size());
    const QByteArray line = after.at(number - 1);
    require(line == (database.Text + u';' + database.Location + u';' + database.State).toUtf8());
    after[number - 1] = before.at(number - 1);
    require(after == before);
}

void removeLine(MemoryFile& file, int number) {
    QByteArrayList expected = linesOf(file.bytes);
    expected.removeAt(number - 1);
    SelectedDBIndex = number;
    DeleteDatabase();
    require(linesOf(file.bytes) == expected);
    require(SelectedDBIndex <= DBCount);
}

} // namespace

} // namespace kelvrane

/// The first byte says which line.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kelvrane;
    if (size == 0)
        return 0;
    MemoryFile file;
    NoDialogs dialogs;
    ports = {};
    ports.files = &file;
    ports.dialogs = &dialogs;
    SetAppPath(QStringLiteral("/program"));
    sheetState = {};
    Databases().reset();
    file.bytes = QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);
    if (!load() || DBCount == 0)
        return 0;
    const int number = data[0] % DBCount + 1;
    rewriteLine(file, number);
    removeLine(file, number);
    ports = {};
    return 0;
}
