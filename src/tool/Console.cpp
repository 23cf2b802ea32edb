#include "tool/Console.h"

#include "tool/Terminal.h"

namespace Quorlin {

namespace {

bool write(std::FILE *stream, const QByteArray &bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

} // namespace

void Console::print(const QString &line)
{
    (void)writeOutput(harmless(line).toUtf8() + '\n');
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

int Console::errorWidth() const
{
    return Terminal::width(stderr);
}

QString Console::harmless(QString text)
{
    for (auto &character : text) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    }
    return text;
}

} // namespace Quorlin
