#include "tool/Console.h"

#include "tool/FileNames.h"
#include "tool/Terminal.h"

#include <cerrno>
#include <system_error>

namespace Quorlin {

namespace {

bool write(std::FILE *stream, const QByteArray &bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

/// Line and paragraph separators, and what embeds or overrides the direction of writing.
bool turnsOrder(QChar character)
{
    const auto code = character.unicode();
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

void Console::print(const QString &line)
{
    if (!writeOutput(harmless(line).toUtf8() + '\n') && m_lostOutput.isEmpty())
        m_lostOutput = QString::fromStdString(std::generic_category().message(errno));
}

void Console::complain(const QString &line)
{
    note(QStringLiteral("quorlin-convert: ") + line);
}

void Console::note(const QString &line)
{
    writeError(harmless(line).toUtf8() + '\n');
}

bool Console::writeOutput(const QByteArray &bytes)
{
    return write(stdout, bytes);
}

void Console::writeError(const QByteArray &bytes)
{
    (void)write(stderr, bytes);
}

int Console::outputWidth() const
{
    return Terminal::width(stdout);
}

int Console::errorWidth() const
{
    return Terminal::width(stderr);
}

QString Console::harmless(QString text)
{
    for (auto &character : text) {
        if (character.category() == QChar::Other_Control || turnsOrder(character))
            character = QLatin1Char('?');
    }
    return FileNames::legible(text);
}

} // namespace Quorlin
