#include "unit/ghostscript/GhostscriptScene.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

namespace Quorlin {

GhostscriptScene::GhostscriptScene()
    : options(folder.write("o.joboptions", "<< /CompatibilityLevel 1.4 >> setdistillerparams\n")),
      m_pathBefore(qgetenv("PATH"))
{
}

GhostscriptScene::~GhostscriptScene()
{
    qputenv("PATH", m_pathBefore);
}

QJsonObject GhostscriptScene::requestFor(const QByteArray &program)
{
    const auto name = QByteArray::number(++m_count);
    m_output = folder.path(name + ".pdf");
    return {{QStringLiteral("input"), folder.write(name + ".ps", program)},
            {QStringLiteral("output"), m_output},
            {QStringLiteral("options"), options}};
}

WorkerAnswer GhostscriptScene::distil(WorkerWatch &watch, const QByteArray &program,
                                      QJsonObject request, const Limits &limits)
{
    const auto files = requestFor(program);
    for (auto file = files.begin(); file != files.end(); ++file)
        request.insert(file.key(), file.value());
    return watch.run(request, folder.path(), limits);
}

void GhostscriptScene::begin(WorkerWatch &watch, const QByteArray &program, const Limits &limits)
{
    watch.begin(requestFor(program), folder.path(), limits);
}

int GhostscriptScene::pages() const
{
    const auto bytes = pdf();
    return static_cast<int>(bytes.count("/Type/Page") - bytes.count("/Type/Pages"));
}

void GhostscriptScene::watchProcesses()
{
    const auto real = QFile::encodeName(QStandardPaths::findExecutable(QStringLiteral("gs")));
    // The only folder that the process may write is the one for its temporary files.
    const auto script = outside.write(
        "programs/gs", "#!/bin/sh\necho $$ >\"$TMPDIR/pid\"\nexec \"" + real + "\" \"$@\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(outside.path("programs")) + ':' + m_pathBefore);
}

qint64 GhostscriptScene::processId() const
{
    const auto note = folder.path("pid");
    (void)QTest::qWaitFor([&] { return contentOf(note).endsWith('\n'); }, 30000);
    return contentOf(note).trimmed().toLongLong();
}

void GhostscriptScene::hideProgram()
{
    qputenv("PATH", QFile::encodeName(outside.makeFolder("nothing")));
}

QByteArray pagesOf(int count)
{
    QByteArray program("%!PS-Adobe-3.0\n/Helvetica findfont 12 scalefont setfont\n");
    for (int page = 1; page <= count; ++page)
        program += "72 700 moveto (page " + QByteArray::number(page) + ") show showpage\n";
    return program;
}

} // namespace Quorlin
