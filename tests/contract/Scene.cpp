#include "contract/Scene.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Quorlin {

namespace {

QByteArray flatOdt(const QByteArray &text)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" office:version=\"1.2\" "
           "office:mimetype=\"application/vnd.oasis.opendocument.text\"><office:body>"
           "<office:text><text:p>" +
           text + "</text:p></office:text></office:body></office:document>\n";
}

QByteArray bytesFor(const QString &name)
{
    const auto text = QFileInfo(name).completeBaseName().toUtf8();
    const auto extension = QFileInfo(name).suffix();
    if (extension == QLatin1String("ps"))
        return "%!PS-Adobe-3.0\n/Helvetica findfont 12 scalefont setfont 72 700 moveto (" + text +
               ") show showpage\n";
    if (extension == QLatin1String("html"))
        return "<html><body><p>" + text + "</p></body></html>\n";
    if (extension == QLatin1String("fodt"))
        return flatOdt(text);
    return text + "\n";
}

} // namespace

ComponentSettings settingsFor(const QString &program)
{
    ComponentSettings settings;
    settings.program = program;
    return settings;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Scene::Scene(const QString &program) : Scene(settingsFor(program)) {}

Scene::Scene(const ComponentSettings &settings)
    : client(std::make_unique<ComponentClient>(settings)), lib(std::make_unique<PDFLib>(*client)),
      distiller(std::make_unique<PDFDistiller>(*client)),
      merger(std::make_unique<PDFMerger>(*client)), printing(std::make_unique<EventRecorder>(*lib)),
      distilling(std::make_unique<EventRecorder>(*distiller)),
      merging(std::make_unique<EventRecorder>(*merger)),
      m_options(write("test.joboptions", "<< /CompatibilityLevel 1.5 >> setdistillerparams\n"))
{
}

QString Scene::document(const char *name) const
{
    return write(name, bytesFor(QString::fromUtf8(name)));
}

QString Scene::absent(const char *name) const
{
    return m_folder.filePath(QString::fromUtf8(name));
}

QString Scene::write(const char *name, const QByteArray &bytes) const
{
    const auto path = absent(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write a test document");
    m_written.append(QString::fromUtf8(name));
    return path;
}

void Scene::print(const QStringList &files)
{
    lib->Documents().Clear();
    for (const auto &file : files)
        lib->Documents().Add(file, {}, {}, {});
    lib->Start();
}

void Scene::distil(const QStringList &files)
{
    distiller->Documents().Clear();
    for (const auto &file : files)
        distiller->Documents().Add(file, {}, m_options, {});
    distiller->Start();
}

void Scene::merge(const QStringList &files)
{
    merger->Documents().Clear();
    for (const auto &file : files)
        merger->Documents().Add(file, {}, {}, {});
    merger->setBookmarkPerDocument(true);
    merger->Start();
}

QStringList Scene::leftovers() const
{
    auto names = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    names.removeIf([this](const QString &name) { return m_written.contains(name); });
    return names;
}

void Scene::end()
{
    lib.reset();
    distiller.reset();
    merger.reset();
    client.reset();
}

QString component()
{
    return qEnvironmentVariable("QUORLIN_CONTRACT_COMPONENT",
                                QStringLiteral(QUORLIN_FAKE_COMPONENT));
}

} // namespace Quorlin
