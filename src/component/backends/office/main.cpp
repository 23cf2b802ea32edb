#include "component/backends/office/OfficeWorker.h"
#include "component/backends/worker/WorkerStart.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const Quorlin::WorkerStart start(argc, argv);
    const QCoreApplication application(argc, argv);
    return Quorlin::OfficeWorker().run(start);
}
