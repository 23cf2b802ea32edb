#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/backends/postscript/PostScriptSplice.h"
#include "component/backends/postscript/PostScriptText.h"

#include <cstring>
#include <optional>
#include <string>

using namespace Quorlin;
using Fuzz::check;

namespace {

constexpr std::string_view Header = "%!PS-Adobe-3.0\n%%Creator: here\n";
constexpr std::string_view Prolog = "/ourProlog true def\n";
constexpr std::string_view SetUp = "/ourSetUp true def\n";

std::string pageSetup(int page)
{
    return "/ourPage " + std::to_string(page) + " def\n";
}

struct Result
{
    std::string text;
    int pages = 0;
    bool whole = false;

    bool operator==(const Result &) const = default;
};

Result spliced(std::string_view text, std::size_t piece)
{
    Result result;
    PostScriptSplice splice(
        {std::string(Header), std::string(Prolog), std::string(SetUp), pageSetup},
        [&result](const std::string &bytes) {
            result.text += bytes;
            return true;
        });
    Fuzz::inPieces(text, piece, [&splice](std::string_view part) {
        check(splice.take({part.data(), static_cast<qsizetype>(part.size())}));
    });
    check(splice.finish());
    result.pages = splice.pages();
    result.whole = splice.whole();
    return result;
}

void checkSplice(std::string_view text)
{
    const auto whole = spliced(text, std::max<std::size_t>(text.size(), 1));
    for (const std::size_t piece : {1, 7, 64})
        check(spliced(text, piece) == whole);
    check(whole.text.starts_with(Header));
    check(whole.pages >= 0 && static_cast<std::size_t>(whole.pages) <= text.size() / 8);
    const auto added = Header.size() + Prolog.size() + SetUp.size() +
                       static_cast<std::size_t>(whole.pages) * pageSetup(1000000).size();
    check(whole.text.size() <= text.size() + 1 + added);
}

/// What a comment, a number and a string are made of cannot end them.
void checkNumber(double value)
{
    const auto text = PostScriptText::number(value);
    check(!text.empty() && text.size() <= 16 &&
          text.find_first_not_of("-.0123456789") == std::string::npos);
    check(std::abs(std::stod(text)) <= 1e9);
    const auto matrix = PostScriptText::matrix({value, -value, value / 3, 0, 1, value * value});
    check(matrix.front() == '[' && matrix.back() == ']' &&
          matrix.find_first_not_of("[]-.0123456789 ") == std::string::npos);
}

std::string unhexed(const std::string &text)
{
    check(text.size() >= 2 && text.front() == '<' && text.back() == '>');
    const auto bytes = QByteArray::fromHex(QByteArray::fromStdString(text).replace('\n', ""));
    return bytes.toStdString();
}

void checkStrings(std::string_view bytes)
{
    check(unhexed(PostScriptText::hexString(bytes)) ==
          bytes.substr(0, PostScriptText::MaxStringBytes));
    const auto text =
        QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())).left(200);
    const auto written = unhexed(PostScriptText::textString(text));
    const bool isWide = written.starts_with("\xfe\xff");
    check(written.size() == static_cast<std::size_t>(isWide ? 2 + 2 * text.size() : text.size()));
    const auto comment = PostScriptText::comment(text);
    check(comment.size() <= 200 && comment.find_first_of("\r\n\f") == std::string::npos);
    check(!PostScriptText::isPlainName(bytes) ||
          bytes.find_first_of("()<>[]{}/% \n") == std::string_view::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto text = Fuzz::textOf(data, size);
    checkSplice(text);
    checkStrings(text);
    double value = 0;
    if (size >= sizeof value) {
        std::memcpy(&value, data, sizeof value);
        checkNumber(value);
    }
    return 0;
}
