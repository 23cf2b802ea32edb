#include "component/backends/ghostscript/GhostscriptServer.h"

#include <QList>

namespace Quorlin::GhostscriptServer {

namespace {

// Everything lives in the dictionary QJ, made before any save, so that the restore after a
// document leaves it alone. An error is answered before the restore, because the restore
// takes back every value that was stored since the save; "end" is answered once the output
// file is closed. The stacks are cleared first: a failed program may leave anything on them.
// A restore may fail, though all memory is back, when it cannot set the page device that was
// there before: with PDF 1.4 and older that is so after every change of the page's size.
constexpr char Program[] = R"(
userdict /QJ 16 dict put
QJ begin
/word 128 string def
/answer { (\n%quorlin ) print tag print ( ) print exch print ( ) print
  word cvs print (\n) print flush } bind def
/failure { (error) $error /errorname get answer } bind def
/countpage { systemdict /showpage get exec
  QJ begin /pages pages 1 add def (page) pages answer end } bind def
/options { /tag exch def /pages 0 def
  { (r) file cvx exec } stopped { clear QJ begin failure end } if
  clear cleardictstack QJ begin (end) 0 answer end } bind def
/document { /tag exch def /target exch def /source exch def /pages 0 def
  { << /OutputFile target >> setpagedevice } stopped
  { failure clear }
  { save /level exch def
    userdict /showpage /countpage load put
    { source (r) file cvx end exec } stopped { QJ begin failure end } if
    clear cleardictstack
    QJ begin (end-of-pages) pages answer
    { level end restore } stopped { clear } if
    QJ begin } ifelse
  { << /OutputFile (/dev/null) >> setpagedevice } stopped { clear failure } if
  (end) 0 answer end } bind def
end
)";

QByteArray field(const QByteArray &bytes)
{
    return hexString(bytes) + ' ';
}

} // namespace

QByteArray hexString(const QByteArray &bytes)
{
    return '<' + bytes.toHex() + '>';
}

QByteArray start(const QByteArray &optionsFile, const QByteArray &token)
{
    return QByteArray(Program) + "QJ begin " + field(optionsFile) + field(token) + "options\n";
}

QByteArray distil(const QByteArray &input, const QByteArray &output, const QByteArray &token)
{
    return "QJ begin " + field(input) + field(output) + field(token) + "document\n";
}

std::optional<Answer> parse(QByteArrayView line, const QByteArray &token)
{
    const auto words = line.toByteArray().simplified().split(' ');
    if (words.size() != 4 || words[0] != "%quorlin" || words[1] != token)
        return std::nullopt;
    if (words[2] == "page" || words[2] == "end-of-pages") {
        bool isNumber = false;
        const int pages = words[3].toInt(&isNumber);
        return isNumber && pages >= 0 ? std::optional(Answer{Answer::Kind::Page, pages, {}})
                                      : std::nullopt;
    }
    if (words[2] == "error")
        return Answer{Answer::Kind::Error, 0, words[3]};
    if (words[2] == "end")
        return Answer{Answer::Kind::End, 0, {}};
    return std::nullopt;
}

} // namespace Quorlin::GhostscriptServer
