#include "fuzz/FuzzTarget.h"

#include <QDirIterator>
#include <QFile>
#include <QTest>

#include <algorithm>

/// Runs a fuzz target over its corpus: inputs that were once hard to bear stay harmless.
class Replay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bearsEveryInputOfTheCorpus();
    void bearsEveryBeginningOfTheSmallInputs();
};

namespace {

QStringList inputs()
{
    QStringList paths;
    QDirIterator files(QStringLiteral(QUORLIN_CORPUS), QDir::Files);
    while (files.hasNext())
        paths.append(files.next());
    std::ranges::sort(paths);
    return paths;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// From a buffer of exactly this size, so that the sanitizer sees a read behind it.
int run(const QByteArray &bytes, qsizetype size)
{
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.begin() + size);
    return LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

} // namespace

void Replay::bearsEveryInputOfTheCorpus()
{
    const auto paths = inputs();
    QVERIFY2(!paths.isEmpty(), "the corpus is empty: " QUORLIN_CORPUS);
    for (const auto &path : paths) {
        const auto bytes = bytesOf(path);
        QVERIFY2(run(bytes, bytes.size()) == 0, qPrintable(path));
    }
}

void Replay::bearsEveryBeginningOfTheSmallInputs()
{
    constexpr qsizetype Small = 512;
    for (const auto &path : inputs()) {
        const auto bytes = bytesOf(path);
        for (qsizetype size = 0; bytes.size() <= Small && size < bytes.size(); ++size)
            QVERIFY2(run(bytes, size) == 0, qPrintable(path));
    }
}

QTEST_GUILESS_MAIN(Replay)
#include "Replay.moc"
