#include "platform/error.h"

#include <utility>

namespace kelvrane {

namespace {
struct Row {
    int number;
    const char* text;
};
constexpr Row errorTexts[] = {
    {errors::BadArgument, "Invalid procedure call or argument"},
    {errors::Overflow, "Overflow"},
    {errors::Subscript, "Subscript out of range"},
    {errors::DivisionByZero, "Division by zero"},
    {errors::TypeMismatch, "Type mismatch"},
    {errors::BadFileName, "Bad file name or number"},
    {errors::FileNotFound, "File not found"},
    {errors::DeviceError, "Device I/O error"},
    {errors::FileExists, "File already exists"},
    {errors::DiskFull, "Disk full"},
    {errors::EndOfFile, "Input past end of file"},
    {errors::PermissionDenied, "Permission denied"},
    {errors::PathAccess, "Path/File access error"},
    {errors::NoObject, "Object variable not set"},
    {errors::BadFindText, "The find text is not valid"},
    {errors::NoCurrentRecord, "There is no current record"},
    {errors::DatabaseLocked, "The database is in use by another program"},
    {errors::DatabaseOpen, "The database could not be opened"},
    {errors::Sql, "The database did not accept the statement"},
};
} // namespace

RuntimeError::RuntimeError(int errorNumber, QString errorSource, QString errorDescription)
    : number(errorNumber), source(std::move(errorSource)), description(std::move(errorDescription)),
      m_what(QByteArray::number(number) + ' ' + description.toUtf8()) {}

QString ErrorText(int number) {
    for (const Row& row : errorTexts)
        if (row.number == number)
            return QString::fromLatin1(row.text);
    return QStringLiteral("Application-defined error");
}

void Raise(int number, const QString& description, const QString& source) {
    throw RuntimeError(number, source, description.isEmpty() ? ErrorText(number) : description);
}

} // namespace kelvrane
