#include "tool/OptionsReader.h"

#include <array>
#include <limits>

namespace Quorlin {

namespace {

struct Entry
{
    const char *letter;
    const char *name;
    const char *value; ///< null: a switch
    const char *text;  ///< lines of help
};

constexpr std::array Entries{
    Entry{"q", "quality", "NAME",
          "job options of this name from Quorlin.ini; \"Default\"\nif not given"},
    Entry{"m", "merge", "FILE",
          "join all documents into this one PDF; a relative name\n"
          "lies in the folder of --output if there is one"},
    Entry{"o", "output", "FOLDER",
          "put the results into this folder, which is made when it\n"
          "is missing; else each lies beside its document"},
    Entry{"T", "files-from", "FILE",
          "convert also what this file names, one document or\n"
          "folder a line; \"-\" is standard input; may be repeated"},
    Entry{"0", "null", nullptr,
          "what --files-from names is separated by NUL and not by\n"
          "line feeds, as by \"find -print0\""},
    Entry{"j", "jobs", "N",
          "work on N documents at once at the most; else on as many\n"
          "as suit the machine"},
    Entry{"n", "dry-run", nullptr,
          "tell what would come where and what is not taken;\nconvert and write nothing"},
    Entry{"s", "summary", nullptr, "end with a table of all documents"},
    Entry{nullptr, "json", "FILE", "write a report as JSON; \"-\" is standard output"},
    Entry{nullptr, "timeout", "SECONDS",
          "longest time that one document may take in a step;\n600 if not given"},
    Entry{nullptr, "stall", "SECONDS",
          "longest time that one document may take without any\nprogress; 60 if not given"},
    Entry{nullptr, "memory", "MEBIBYTES",
          "memory that one document may need; half of the\n"
          "machine's, from 1024 to 4096, if not given"},
    Entry{nullptr, "quiet", nullptr, "say nothing but what failed"},
    Entry{"v", "verbose", nullptr, "show what the PDF component logs"},
    Entry{"h", "help", nullptr, "show this help and end"},
    Entry{nullptr, "version", nullptr, "show the version and end"},
};

constexpr char Head[] =
    "Usage: quorlin-convert [options] documents or folders ...\n"
    "\n"
    "Turns office documents, pictures, PostScript and PDF files into PDF. Folders are\n"
    "searched with everything below them. The documents themselves are never changed;\n"
    "a result of the same name from an earlier run is replaced.\n"
    "\n"
    "Options:\n";

constexpr char Foot[] =
    "\n"
    "Exit codes:\n"
    "  0    every document was converted, or would be\n"
    "  1    at least one was not; each is named with its reason on standard error\n"
    "  2    the command line was wrong; nothing was converted\n"
    "  130  interrupted (143: terminated); what was not finished is removed\n";

constexpr int TextColumn = 26;

QString helpOf(const Entry &entry)
{
    auto left = entry.letter ? QStringLiteral("  -%1, --").arg(QLatin1String(entry.letter))
                             : QStringLiteral("      --");
    left += QLatin1String(entry.name);
    if (entry.value)
        left += QLatin1Char(' ') + QLatin1String(entry.value);
    QString text = left.leftJustified(TextColumn);
    const auto lines = QString::fromLatin1(entry.text).split(QLatin1Char('\n'));
    text += lines.join(QLatin1Char('\n') + QString(TextColumn, QLatin1Char(' ')));
    return text + QLatin1Char('\n');
}

QCommandLineOption optionOf(const Entry &entry)
{
    QStringList names(QString::fromLatin1(entry.name));
    if (entry.letter)
        names.append(QString::fromLatin1(entry.letter));
    QCommandLineOption option(names);
    if (entry.value)
        option.setValueName(QString::fromLatin1(entry.value));
    return option;
}

} // namespace

OptionsReader::OptionsReader()
{
    for (const auto &entry : Entries)
        m_parser.addOption(optionOf(entry));
}

QString OptionsReader::help()
{
    auto text = QString::fromLatin1(Head);
    for (const auto &entry : Entries)
        text += helpOf(entry);
    return text + QString::fromLatin1(Foot);
}

std::optional<Options> OptionsReader::read(const QStringList &arguments)
{
    m_error.clear();
    Options options;
    if (!m_parser.parse(arguments))
        m_error = m_parser.errorText();
    else if (m_parser.isSet(QStringLiteral("help")))
        options.action = Options::Action::Help;
    else if (m_parser.isSet(QStringLiteral("version")))
        options.action = Options::Action::Version;
    else if (takeTexts(options))
        m_error = options.inconsistency();
    return m_error.isEmpty() ? std::optional(options) : std::nullopt;
}

bool OptionsReader::takeTexts(Options &options)
{
    options.inputs = m_parser.positionalArguments();
    options.lists = m_parser.values(QStringLiteral("files-from"));
    options.listsHoldNul = m_parser.isSet(QStringLiteral("null"));
    options.dryRun = m_parser.isSet(QStringLiteral("dry-run"));
    options.summary = m_parser.isSet(QStringLiteral("summary"));
    options.quiet = m_parser.isSet(QStringLiteral("quiet"));
    options.verbose = m_parser.isSet(QStringLiteral("verbose"));
    return takeText("quality", options.quality) && takeText("merge", options.mergeFile) &&
           takeText("output", options.outputFolder) && takeText("json", options.reportFile) &&
           takeSeconds("timeout", options.limits.total) &&
           takeSeconds("stall", options.limits.stall) &&
           takeNumber("memory", "number of mebibytes", options.limits.memory) &&
           takeNumber("jobs", "number", options.limits.atOnce);
}

bool OptionsReader::takeText(const char *name, QString &text)
{
    const auto option = QString::fromLatin1(name);
    if (!m_parser.isSet(option))
        return true;
    text = m_parser.value(option);
    if (text.isEmpty())
        m_error = QStringLiteral("--%1 needs a value").arg(option);
    return m_error.isEmpty();
}

bool OptionsReader::takeSeconds(const char *name, std::chrono::seconds &seconds)
{
    int number = 0;
    if (!takeNumber(name, "number of seconds", number))
        return false;
    if (number > 0)
        seconds = std::chrono::seconds(number);
    return true;
}

bool OptionsReader::takeNumber(const char *name, const char *what, int &number)
{
    QString text;
    if (!takeText(name, text))
        return false;
    if (text.isEmpty())
        return true;
    bool isNumber = false;
    const auto value = text.toInt(&isNumber);
    if (isNumber && value >= 1)
        number = value;
    else
        m_error = QStringLiteral("--%1 needs a whole %2 from 1 to %3, not \"%4\"")
                      .arg(QLatin1String(name), QLatin1String(what))
                      .arg(std::numeric_limits<int>::max())
                      .arg(text);
    return m_error.isEmpty();
}

} // namespace Quorlin
