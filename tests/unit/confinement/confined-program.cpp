/// A program that confines itself and then tries what it should not be able to do.
///
///   confined-program free|confined|starter|engine FOLDER ACTION TARGET   prints how it went
///   confined-program missing ""                prints what the system has not got
///   confined-program without-file-rules|without-call-filters PROGRAM …   becomes that program
///
/// "free" is without a sandbox, to see that the action can succeed at all.

#include "component/confinement/Confinement.h"
#include "unit/confinement/ConfinedAction.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <string_view>

#ifdef __SANITIZE_ADDRESS__
/// The search for leaks looks at the process from another one, which no sandbox allows.
extern "C" const char *__asan_default_options()
{
    return "detect_leaks=0";
}
#endif

using namespace Quorlin;

namespace {

Boundaries boundariesOf(std::string_view kind, const QString &folder)
{
    auto boundaries = Boundaries::around(folder);
    boundaries.startsPrograms = kind == "starter";
    boundaries.connectsLocally = kind == "starter";
    boundaries.ownSocketsOnly = kind == "engine";
    boundaries.runnable = {QStringLiteral("/usr/bin/true")};
    return boundaries;
}

int tryOut(std::string_view kind, char **arguments)
{
    const auto folder = QFile::decodeName(arguments[0]);
    QDir::setCurrent(folder);
    if (kind != "free" && !Confinement(boundariesOf(kind, folder)).enter()) {
        std::puts("cannot be confined");
        return 2;
    }
    std::puts(ConfinedAction::attempt(arguments[1], arguments[2]).constData());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string_view kind = argc > 2 ? argv[1] : "";
    if (kind == "without-file-rules" && ConfinedAction::hideFileRules())
        ConfinedAction::become(argv + 2);
    else if (kind == "without-call-filters" && ConfinedAction::hideCallFilters())
        ConfinedAction::become(argv + 2);
    else if (kind == "missing")
        return std::puts(qUtf8Printable(Confinement::missing())) < 0 ? 1 : 0;
    else if (argc == 5)
        return tryOut(kind, argv + 2);
    std::fputs("confined-program: wrong use, or the system refused\n", stderr);
    return 3;
}
