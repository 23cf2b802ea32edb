#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/backends/postscript/ActualText.h"
#include "component/backends/postscript/ContentRewriter.h"
#include "component/backends/postscript/ContentScanner.h"
#include "component/backends/postscript/PdfName.h"

#include <cmath>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// The names that the corpus uses, and what is to be drawn for them.
class Scene
{
public:
    Scene()
    {
        const MaskMarks mask{"MB", "MF", "ME"};
        m_states["G1"].values = "V1";
        m_states["G2"].mask = mask;
        m_states["G3"].clearMask = "C3";
        m_states["G4"].values = "V4";
        m_states["G4"].mask = MaskMarks{"NB", "NF", "NE"};
    }

    [[nodiscard]] ContentRewriter::Names names() const
    {
        return {m_states,
                m_images,
                m_shadings,
                m_spans,
                [](const std::u16string &text) { return text.empty() ? "T0" : "T1"; },
                "TE",
                "IB",
                "IE",
                [](const std::string &name, const Matrix &) {
                    return name == "P1"   ? PictureUses::Use{"K1", false}
                           : name == "P2" ? PictureUses::Use{"K2", true}
                                          : PictureUses::Use{{}, false};
                }};
    }

    [[nodiscard]] static ContentRewriter::Names noNames()
    {
        static const Scene none{0};
        return {none.m_states,
                none.m_images,
                none.m_shadings,
                none.m_spans,
                [](const std::u16string &) { return std::string(); },
                {},
                {},
                {},
                {}};
    }

private:
    explicit Scene(int) : m_images(), m_shadings(), m_spans() {}

    std::map<std::string, GraphicsStateMarks> m_states;
    std::map<std::string, std::vector<std::string>> m_images{{"I1", {"A1", "A2"}}, {"P1", {"A3"}}};
    std::map<std::string, std::string> m_shadings{{"S1", "H1"}};
    std::map<std::string, std::string> m_spans{{"B1", "T2"}};
};

/// Operators follow each other without touching, their operands stand before them.
void checkWalk(std::string_view content)
{
    ContentScanner scanner(content);
    std::size_t last = 0;
    while (scanner.next()) {
        check(scanner.begin() >= last && scanner.begin() < scanner.end());
        check(scanner.end() <= content.size() && !scanner.op().empty());
        const auto op = static_cast<std::size_t>(scanner.op().data() - content.data());
        check(op >= scanner.begin() && op + scanner.op().size() <= scanner.end());
        check(scanner.operands() == content.substr(scanner.begin(), op - scanner.begin()));
        for (std::size_t i = 0; i < 8; ++i) {
            check(std::isfinite(scanner.number(i)));
            check(decodedName(scanner.operand(i)).size() <= scanner.operand(i).size());
        }
        static_cast<void>(actualText(scanner.operands()));
        last = scanner.end();
    }
}

/// Whether every q has its Q, and none stands before its q.
bool isBalanced(std::string_view content)
{
    ContentScanner scanner(content);
    long long open = 0;
    while (scanner.next() && open >= 0)
        open += scanner.op() == "q" ? 1 : scanner.op() == "Q" ? -1 : 0;
    return open == 0 && !scanner.brokenOff();
}

bool draws(std::string_view content, const std::string &name)
{
    ContentScanner scanner(content);
    while (scanner.next())
        if (scanner.op() == "Do" && scanner.operand(0) == "/" + name)
            return true;
    return false;
}

/// Where an inline image ends is guessed from the few bytes behind it, which a mark moves.
bool hasInlineImage(std::string_view content)
{
    return content.find("BI") != std::string_view::npos;
}

void checkMarked(std::string_view content)
{
    constexpr std::size_t MostForEach = 400; // bytes that one operator can become
    static const Scene scene;
    const auto names = scene.names();
    ContentRewriter rewriter(names);
    const auto marked = rewriter.rewrite(content);
    if (!marked)
        return;
    check(marked->size() <= (content.size() + 1) * MostForEach);
    check(ContentRewriter(names).rewrite(content) == marked);
    if (hasInlineImage(content))
        return;
    check(isBalanced(*marked));
    for (const auto &name : rewriter.used())
        check(draws(*marked, name));
}

/// Without any marks only the brackets change, and only once.
void checkPlain(std::string_view content)
{
    const auto names = Scene::noNames();
    const auto plain = ContentRewriter(names).rewrite(content);
    check(!plain || plain->size() <= 3 * content.size());
    if (!plain || hasInlineImage(content))
        return;
    check(isBalanced(*plain));
    check(!isBalanced(content) || *plain == content);
    check(ContentRewriter(names).rewrite(*plain) == plain);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto content = Fuzz::textOf(data, size);
    checkWalk(content);
    checkMarked(content);
    checkPlain(content);
    return 0;
}
