#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/PostScriptCheck.h"

#include "component/backends/postscript/Pdfmarks.h"
#include "component/backends/postscript/PrintCopy.h"
#include "component/backends/postscript/Prologue.h"

#include <QTemporaryDir>

#include <cmath>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// What a page's size may lose when it is written into the copy, in points.
constexpr double Rounding = 0.02;

class Scene
{
public:
    [[nodiscard]] QString input() const { return m_folder.filePath(QStringLiteral("in.pdf")); }
    [[nodiscard]] QString copy() const { return m_folder.filePath(QStringLiteral("copy.pdf")); }

private:
    QTemporaryDir m_folder;
};

std::string marksOf(const PdfInventory &inventory)
{
    const Pdfmarks marks(inventory, {{"file:///w/", "file:///d/"}});
    const auto pages = static_cast<int>(inventory.pages.size());
    check(marks.pageMarks(0).empty() && marks.pageMarks(pages + 1).empty());
    auto text = marks.documentMarks();
    for (int page = 1; page <= pages; ++page)
        text += marks.pageMarks(page);
    return text;
}

void checkTarget(const PdfTarget &target, std::size_t pages)
{
    if (target.kind == PdfTarget::Kind::Page)
        check(target.page >= 1 && static_cast<std::size_t>(target.page) <= pages);
}

void checkBookmarks(const std::vector<PdfBookmark> &list, std::size_t pages)
{
    for (const auto &bookmark : list) {
        checkTarget(bookmark.target, pages);
        checkBookmarks(bookmark.children, pages);
    }
}

void checkInventory(const PdfInventory &inventory)
{
    const auto pages = inventory.pages.size();
    check(pages > 0 && inventory.links.size() == pages);
    for (const auto &links : inventory.links)
        for (const auto &link : links)
            checkTarget(link.target, pages);
    checkBookmarks(inventory.bookmarks, pages);
    checkTarget(inventory.openAction, pages);
    for (const auto &page : inventory.pages)
        check(page.sheetWidth() > 0 && page.sheetHeight() > 0 && std::isfinite(page.sheetWidth()) &&
              std::isfinite(page.sheetHeight()));
    check(Fuzz::PostScriptCheck::isSafe(marksOf(inventory)));
}

/// The copy has the same pages, and nothing that acts or leads anywhere.
void checkCopy(const PdfInventory &original, const QString &path)
{
    PrintCopy copy;
    check(copy.open(path, true) == Reason::None);
    const auto &inventory = copy.inventory();
    check(inventory.pages.size() == original.pages.size());
    for (std::size_t i = 0; i < inventory.pages.size(); ++i)
        for (std::size_t side = 0; side < 4; ++side)
            check(std::abs(inventory.pages[i].box()[side] - original.pages[i].box()[side]) <
                  Rounding);
    check(inventory.bookmarks.empty() && inventory.destinations.empty() && inventory.info.empty() &&
          inventory.labels.empty() && inventory.openAction.kind == PdfTarget::Kind::None);
}

void print(const Scene &scene, bool foreign)
{
    PrintCopy document;
    if (document.open(scene.input(), foreign) != Reason::None)
        return;
    const auto inventory = document.inventory();
    checkInventory(inventory);
    if (document.write(scene.copy()) != Reason::None)
        return;
    check(Fuzz::PostScriptCheck::isSafe(Prologue::fontTable(document.fonts())));
    check(Fuzz::PostScriptCheck::isSafe(document.textFonts().definitions()));
    checkCopy(inventory, scene.copy());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scene scene;
    Fuzz::writeFile(scene.input(), Fuzz::textOf(data, size));
    // The document's size decides whose it is, so that both ways are looked at.
    print(scene, size % 2 == 0);
    return 0;
}
