#include "fuzz/FuzzTarget.h"

#include "i18n/LanguageFolder.h"
#include "i18n/TextRow.h"
#include "i18n/TextTable.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>

#include <cstdlib>

using Quorlin::LanguageFolder;
using Quorlin::TextCheck;
using Quorlin::TextKey;
using Quorlin::TextRow;
using Quorlin::TextTable;

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

/// An application folder with one language file in it.
class Scene
{
public:
    Scene() { check(QDir(m_folder.path()).mkdir(QStringLiteral("language"))); }

    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("language/x.slg"));
    }
    [[nodiscard]] LanguageFolder languages() const { return LanguageFolder(m_folder.path()); }

    void write(const std::uint8_t *data, std::size_t size) const
    {
        QFile file(path());
        check(file.open(QIODevice::WriteOnly) &&
              file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size));
    }

private:
    QTemporaryDir m_folder;
};

void checkBuiltIn(const TextTable &table)
{
    const TextTable fresh;
    for (const auto &row : TextRow::all())
        check(table.text(row.key) == row.builtIn);
    check(table.language() == QStringLiteral("deutsch"));
    check(table.qualities() == fresh.qualities());
    check(!table.problem().isEmpty());
}

void checkComplete(const TextTable &table)
{
    QString before;
    for (const auto &row : TextRow::all()) {
        const auto text = table.text(row.key);
        check(row.check != TextCheck::Required || !text.isEmpty());
        check(row.check != TextCheck::PairSecond || !text.isEmpty() || !before.isEmpty());
        check(!text.contains(QLatin1Char('\n')) || row.key == TextKey::AboutAdobeInformations);
        before = text;
    }
    check(!table.text(TextKey::AboutAdobeInformations).contains(QLatin1String("\\n")));
    check(table.language() == QStringLiteral("x"));
    check(table.problem().isEmpty());
}

void checkQualities(const TextTable &table)
{
    QSet<QString> keys;
    for (const auto &quality : table.qualities()) {
        check(!keys.contains(quality.key));
        keys.insert(quality.key);
        check(table.qualityText(quality.key) == quality.text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scene scene;
    scene.write(data, size);
    check(scene.languages().languages() == QStringList(QStringLiteral("x")));

    TextTable table;
    const auto path = scene.languages().fileOf(QStringLiteral("X"));
    switch (table.load(path, QStringLiteral("x"))) {
    case TextTable::Result::Loaded:
        checkComplete(table);
        break;
    case TextTable::Result::Invalid:
        checkBuiltIn(table);
        break;
    case TextTable::Result::NotFound:
        check(false);
        break;
    }
    checkQualities(table);
    return 0;
}
