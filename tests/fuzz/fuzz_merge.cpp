#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/backends/merge/MergeRequest.h"

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// What lies behind this line is the second document.
constexpr std::string_view EndOfFirst = "\n%%second document\n";

class Scene
{
public:
    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QLatin1String(name));
    }

    /// @return the pages of the result; 0 when there is none.
    [[nodiscard]] int merge(const QStringList &files, bool hasEntries, const QString &output) const
    {
        QJsonArray inputs;
        for (const auto &file : files)
            inputs.append(QJsonObject{{QStringLiteral("file"), file},
                                      {QStringLiteral("title"), QStringLiteral("a (b)")}});
        int last = 0;
        MergeRequest request({{QStringLiteral("op"), QStringLiteral("merge")},
                              {QStringLiteral("inputs"), inputs},
                              {QStringLiteral("output"), output},
                              {QStringLiteral("bookmarks"), hasEntries}},
                             [&last](int percent) {
                                 check(percent >= last && percent <= 100);
                                 last = percent;
                             });
        const auto outcome = request.run();
        checkOutcome(outcome, files.size(), output);
        return outcome.values.value(QLatin1String("pages")).toInt();
    }

    void clean() const
    {
        for (const auto *name : {"one.pdf", "two.pdf", "merged.pdf", "again.pdf"})
            QFile::remove(path(name));
        check(QDir(m_folder.path()).isEmpty());
    }

private:
    /// There is a whole result or none, and a failure names the document at fault.
    static void checkOutcome(const MergeOutcome &outcome, qsizetype inputs, const QString &output)
    {
        check((outcome.reason == Reason::None) == QFile::exists(output));
        const auto index = outcome.values.value(QLatin1String("index")).toInt(0);
        check(index >= 0 && index <= inputs);
        if (outcome.reason == Reason::None)
            check(index == 0 && outcome.values.value(QLatin1String("pages")).toInt() >= inputs);
        else
            check(!outcome.text.isEmpty() && !outcome.values.contains(QLatin1String("pages")));
    }

    QTemporaryDir m_folder;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scene scene;
    const Fuzz::Halves documents(Fuzz::textOf(data, size), EndOfFirst);
    QStringList files{scene.path("one.pdf")};
    Fuzz::writeFile(files.first(), documents.first);
    if (documents.cut) {
        files << scene.path("two.pdf");
        Fuzz::writeFile(files.last(), documents.second);
    }
    const auto pages = scene.merge(files, size % 2 == 0, scene.path("merged.pdf"));
    // What was merged can be merged.
    if (pages > 0)
        check(scene.merge({scene.path("merged.pdf")}, false, scene.path("again.pdf")) == pages);
    scene.clean();
    return 0;
}
