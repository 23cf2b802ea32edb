#include "unit/supervisor/ComponentScene.h"

#include "component/protocol/Message.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTest>

namespace Quorlin {

namespace {

constexpr int Patience = 60000; ///< milliseconds

void restore(const char *name, const QByteArray &value)
{
    if (value.isEmpty())
        qunsetenv(name);
    else
        qputenv(name, value);
}

QList<QJsonObject> entriesOf(const QStringList &files)
{
    QList<QJsonObject> entries;
    for (const auto &file : files)
        entries.append({{QStringLiteral("file"), file}});
    return entries;
}

} // namespace

ComponentScene::ComponentScene()
    : m_homeBefore(qgetenv("HOME")), m_temporaryBefore(qgetenv("TMPDIR")),
      m_pathBefore(qgetenv("PATH"))
{
    for (const char *name : {"quorlin-pdf-office", "quorlin-pdf-print", "quorlin-pdf-merge"})
        if (!QFile::copy(QStringLiteral(QUORLIN_STAND_IN_WORKER), programs.path(name)))
            qFatal("cannot copy the stand-in for the workers");
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    home.write("o.joboptions", "<< /CompatibilityLevel 1.4 >> setdistillerparams\n");
    component = std::make_unique<Component>(Component::Folders{programs.path(), journals.path()});
    QObject::connect(component.get(), &Component::send, component.get(),
                     [this](const auto &message) { reports.add(message); });
    if (!component->prepare())
        qFatal("the component cannot work");
}

ComponentScene::~ComponentScene()
{
    component.reset();
    restore("HOME", m_homeBefore);
    restore("TMPDIR", m_temporaryBefore);
    restore("PATH", m_pathBefore);
}

QString ComponentScene::document(const char *name, const QByteArray &text) const
{
    return documents.write(name, text);
}

QString ComponentScene::options() const
{
    return home.path("o.joboptions");
}

int ComponentScene::ask(const char *step, QJsonObject request, const QList<QJsonObject> &entries)
{
    QJsonArray list;
    for (const auto &entry : entries)
        list.append(entry);
    request.insert(QStringLiteral("type"), QLatin1String(step));
    request.insert(QStringLiteral("job"), ++m_lastJob);
    request.insert(QStringLiteral("documents"), list);
    QJsonObject limits{{QStringLiteral("stall"), stallSeconds}};
    limits.insert(QStringLiteral("atOnce"), atOnce); // undefined leaves it out
    request.insert(QStringLiteral("limits"), limits);
    send(request);
    return m_lastJob;
}

int ComponentScene::askToPrint(const QStringList &files)
{
    return ask("print", {{QStringLiteral("printer"), QStringLiteral("Varnex PDF")}},
               entriesOf(files));
}

int ComponentScene::askToDistil(const QStringList &files, const QString &options)
{
    auto entries = entriesOf(files);
    for (auto &entry : entries)
        entry.insert(QStringLiteral("options"), options.isEmpty() ? this->options() : options);
    return ask("distil", {}, entries);
}

int ComponentScene::askToMerge(const QStringList &files, bool bookmarks)
{
    return ask("merge", {{QStringLiteral("bookmarks"), bookmarks}}, entriesOf(files));
}

QStringList ComponentScene::print(const QStringList &files)
{
    return outputsOf(askToPrint(files));
}

QStringList ComponentScene::distil(const QStringList &files, const QString &options)
{
    return outputsOf(askToDistil(files, options));
}

QStringList ComponentScene::merge(const QStringList &files, bool bookmarks)
{
    return outputsOf(askToMerge(files, bookmarks));
}

QStringList ComponentScene::outputsOf(int job)
{
    return waitFor("complete", job) ? reports.outputs(job) : QStringList();
}

void ComponentScene::send(const QJsonObject &request)
{
    send(Message::encode(request));
}

void ComponentScene::send(const QByteArray &bytes)
{
    component->receive(bytes);
}

bool ComponentScene::waitFor(const char *type, int job)
{
    return QTest::qWaitFor([&] { return reports.has(type, job); }, Patience);
}

bool ComponentScene::succeeded(int job) const
{
    return reports.last("complete", job).value(QLatin1String("success")).toBool();
}

QList<QJsonObject> ComponentScene::requests(const char *op) const
{
    QList<QJsonObject> found;
    for (const auto &line : contentOf(programs.path("requests.log")).split('\n'))
        if (const auto request = Message::decode(line);
            request && request->value(QLatin1String("op")).toString() == QLatin1String(op))
            found.append(*request);
    return found;
}

void ComponentScene::removeProgram(const char *name) const
{
    if (!QFile::remove(programs.path(name)))
        qFatal("there is no program %s", name);
}

QString ComponentScene::workFolder() const
{
    const auto names = temporary.names().filter(QStringLiteral("quorlin-work-"));
    return names.isEmpty() ? QString() : temporary.path(qUtf8Printable(names.first()));
}

void ComponentScene::end()
{
    component->shutDown();
}

QStringList ComponentScene::leftovers() const
{
    return temporary.names() + journals.names();
}

} // namespace Quorlin
