#pragma once

#include "tool/Options.h"

#include <QCommandLineParser>

#include <optional>

namespace Quorlin {

/// Reads the command line into Options.
class OptionsReader
{
public:
    OptionsReader();

    /// @param arguments the program's name first. @return nothing on wrong use, see error().
    [[nodiscard]] std::optional<Options> read(const QStringList &arguments);

    /// What was wrong with the last command line.
    [[nodiscard]] QString error() const { return m_error; }

    /// The text of --help, with its last line feed.
    [[nodiscard]] static QString help();

private:
    bool takeTexts(Options &options);
    bool takeText(const char *name, QString &text);
    bool takeSeconds(const char *name, std::chrono::seconds &seconds);
    bool takeNumber(const char *name, const char *what, int &number);

    QCommandLineParser m_parser;
    QString m_error;
};

} // namespace Quorlin
