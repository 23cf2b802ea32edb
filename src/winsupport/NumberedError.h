#pragma once

#include <QString>

#include <exception>

namespace Quorlin {

/// An error with a number, as the registry and the timers raise it.
class NumberedError : public std::exception
{
public:
    /// Errors that belong to an object start here.
    static constexpr quint32 ObjectBase = 0x80040000;

    /// @param source who raised it, without the program's name: "cRegistry".
    NumberedError(quint32 number, const QString &source, const QString &description);

    [[nodiscard]] quint32 number() const { return m_number; }
    /// The executable's name, a point, and who raised the error.
    [[nodiscard]] QString source() const { return m_source; }
    [[nodiscard]] QString description() const { return m_description; }

    /// The description in UTF-8.
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

    /// The running executable's name without its folder and without ".exe".
    [[nodiscard]] static QString executableName();

private:
    quint32 m_number;
    QString m_source;
    QString m_description;
    QByteArray m_what;
};

} // namespace Quorlin
