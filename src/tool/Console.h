#pragma once

#include <QString>

#include <cstdio>

namespace Quorlin {

/// The tool's two streams, in UTF-8. Tests derive from it and keep what is written.
class Console
{
public:
    Console() = default;
    virtual ~Console() = default;
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;

    /// Writes a line to standard output; control characters in it become "?". A failure is
    /// kept for lostOutput().
    void print(const QString &line);

    /// Why lines of print() were lost, for people; empty when none was.
    [[nodiscard]] QString lostOutput() const { return m_lostOutput; }

    /// Writes a line to standard error, behind the program's name.
    void complain(const QString &line);

    /// Writes a line to standard error as it is, but for control characters.
    void note(const QString &line);

    /// Writes bytes to standard output as they are. @return false when that failed, with the
    /// reason in errno.
    [[nodiscard]] virtual bool writeOutput(const QByteArray &bytes);

    /// Writes bytes to standard error as they are.
    virtual void writeError(const QByteArray &bytes);

    /// Columns of the terminal behind a stream; 0 when there is none.
    [[nodiscard]] virtual int outputWidth() const;
    [[nodiscard]] virtual int errorWidth() const;

    /// Text without anything that could steer a terminal or turn the order of what it shows.
    [[nodiscard]] static QString harmless(QString text);

private:
    QString m_lostOutput;
};

} // namespace Quorlin
