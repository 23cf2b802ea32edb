// Writes numbered values into the registry of this system, made to be killed by a test.
//
// Usage: registry-writer NAME FROM COUNT
// Binds to the key Test\Writers and writes the values "NAME FROM", "NAME FROM+1" and so on, each
// with its number as text, and prints each number when it was written.

#include "settings/Registry.h"
#include "settings/SystemRegistry.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Quorlin;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    Registry registry(SystemRegistry::store());
    registry.SetAppParam(RegistryRoot::CurrentUser, QStringLiteral("Test\\Writers"));
    const auto from = arguments.at(2).toInt();
    for (auto number = from; number < from + arguments.at(3).toInt(); ++number) {
        registry.SetAppData(arguments.at(1) + QStringLiteral(" %1").arg(number),
                            QString::number(number));
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
    return 0;
}
