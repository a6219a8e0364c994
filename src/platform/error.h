// The program's one error type. Routines raise it by number; callers skip it step by step
// (skip_errors.h) or report it to the user (frame/error_report.h). Bugs are never a RuntimeError.
//
//     if (index < 0) Raise(errors::Subscript);
//     const DayEntry& entry = At(DayEntries, CurrentEntryIndex);
#pragma once

#include <QString>

#include <exception>

namespace kelvrane {

namespace errors {
inline constexpr int BadArgument = 5;
inline constexpr int Overflow = 6;
inline constexpr int Subscript = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int DeviceError = 57;
inline constexpr int FileExists = 58;
inline constexpr int DiskFull = 61;
inline constexpr int EndOfFile = 62;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathAccess = 75;
inline constexpr int NoObject = 91;
inline constexpr int BadFindText = 3001;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int DatabaseLocked = 3260; ///< somebody else uses it; worth another try
inline constexpr int DatabaseOpen = -2147467259;
inline constexpr int Sql = -2147217900;
} // namespace errors

class RuntimeError : public std::exception {
  public:
    RuntimeError(int errorNumber, QString errorSource, QString errorDescription);
    const char* what() const noexcept override { return m_what.constData(); }

    int number;          ///< one of errors::
    QString source;      ///< the layer that raised it, such as "Kelvrane" or "SQLite"
    QString description; ///< one sentence for the user

  private:
    QByteArray m_what;
};

/// The standard sentence of an error number; "Application-defined error" for an unknown one.
QString ErrorText(int number);

/// Throws RuntimeError. An empty description becomes ErrorText(number).
[[noreturn]] void Raise(int number, const QString& description = {},
                        const QString& source = QStringLiteral("Kelvrane"));

/// The element at a 0-based index; raises Subscript outside the container.
template <typename Container>
decltype(auto) At(Container& container, qsizetype index) {
    if (index < 0 || index >= static_cast<qsizetype>(container.size()))
        Raise(errors::Subscript);
    return container[static_cast<typename Container::size_type>(index)];
}

} // namespace kelvrane
