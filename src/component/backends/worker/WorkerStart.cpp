#include "component/backends/worker/WorkerStart.h"

#include "component/confinement/Confinement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string_view>

#ifdef __SANITIZE_ADDRESS__
/// The search for leaks looks at the process from another one, which no sandbox allows.
extern "C" const char *__asan_default_options()
{
    return "detect_leaks=0";
}
#endif

namespace Quorlin {

WorkerStart::WorkerStart(int argc, char **argv)
{
    using namespace std::string_view_literals;
    if (argc != 3 || argv[1] != "--work"sv)
        return;
    const QFileInfo folder(QFile::decodeName(argv[2]));
    if (!folder.isDir() || !folder.isWritable())
        return;
    m_folder = folder.canonicalFilePath();
    QDir::setCurrent(m_folder);
    qputenv("TMPDIR", QFile::encodeName(m_folder));
}

std::optional<int> WorkerStart::enter(WorkerLoop &loop, const Boundaries &boundaries) const
{
    if (m_folder.isEmpty())
        return loop.refuse(Reason::NotAllowed,
                           QStringLiteral("the working folder cannot be written"));
    if (!Confinement(boundaries).enter())
        return loop.refuse(Reason::EngineFailed,
                           QStringLiteral("the system refuses the worker's sandbox"));
    return std::nullopt;
}

} // namespace Quorlin
