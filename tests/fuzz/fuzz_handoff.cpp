#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "app/CommandText.h"
#include "app/FrameReader.h"
#include "ui/CommandItems.h"

#include <algorithm>

using Quorlin::FrameReader;
using Quorlin::HandoffFrame;
using Quorlin::Fuzz::check;
namespace CommandItems = Quorlin::CommandItems;
namespace CommandText = Quorlin::CommandText;

namespace {

FrameReader readInPieces(const char *bytes, qsizetype size, qsizetype piece)
{
    FrameReader reader;
    for (qsizetype from = 0; from < size; from += piece)
        reader.add(bytes + from, std::min(piece, size - from));
    return reader;
}

/// What the receiver relies on, whatever a frame held.
void checkFrame(const HandoffFrame &frame)
{
    check(!frame.bytes.isEmpty() &&
          frame.bytes.size() <= static_cast<qsizetype>(HandoffFrame::mostBytes(frame.kind)));
    check(frame.text().size() <= HandoffFrame::MostCharacters && !frame.text().contains(QChar(0)));
    check(frame.token().size() <= HandoffFrame::MostTokenBytes && !frame.token().contains('\n'));
}

void checkSameAgain(const HandoffFrame &frame)
{
    const auto bytes = frame.encoded();
    FrameReader again;
    check(again.add(bytes.constData(), bytes.size()) == FrameReader::State::Complete);
    check(again.frame().bytes == frame.bytes && again.frame().tag == frame.tag);
    const auto resent = HandoffFrame::ofText(frame.text());
    check(resent.text() == frame.text());
}

/// A path's address leads back to the path, and nothing divides it.
void checkAddress(const QString &path)
{
    const auto address = CommandItems::addressOf(path);
    check(!address.contains(QLatin1Char(',')));
    const auto back = CommandItems::pathOfAddress(address);
    const bool canBeAPath =
        path.startsWith(QLatin1Char('/')) && path.isValidUtf16() && !path.contains(QChar(0));
    check(!canBeAPath || back == path);
}

void checkParts(const QStringList &items)
{
    constexpr qsizetype Most = 40;
    const auto isVerb = CommandItems::verbOf(items, [](const QString &) { return false; }) !=
                        CommandItems::Verb::None;
    QStringList again;
    const auto parts = CommandText::parts(items, Most);
    for (const auto &part : parts) {
        auto own = part.split(QLatin1Char(','));
        if (isVerb && parts.size() > 1)
            check(own.takeFirst() == items.first());
        check(part.size() <= Most || own.size() <= (isVerb ? 2 : 1));
        again << own;
    }
    if (isVerb && parts.size() > 1)
        again.prepend(items.first());
    check(again == items);
}

/// What a start sends, however it was typed or received.
void checkCommand(const QString &text)
{
    const auto raw = text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
    const auto items = CommandItems::split(text);
    check(items.size() == raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const auto path = CommandItems::pathOfAddress(raw[i]);
        check(items[i] == (path.isEmpty() ? raw[i] : path) && !path.contains(QChar(0)));
        checkAddress(items[i]);
    }
    if (!raw.isEmpty())
        checkParts(raw);
    const auto typed = CommandText::items(raw, QStringLiteral("/nowhere"));
    check(typed.size() == raw.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto *const bytes = reinterpret_cast<const char *>(data);
    const auto count = static_cast<qsizetype>(size);
    const auto whole = readInPieces(bytes, count, std::max<qsizetype>(count, 1));
    for (const qsizetype piece : {1, 7, 16}) {
        const auto pieces = readInPieces(bytes, count, piece);
        check(pieces.state() == whole.state());
        check(whole.state() != FrameReader::State::Complete ||
              pieces.frame().bytes == whole.frame().bytes);
    }
    if (whole.state() == FrameReader::State::Complete) {
        checkFrame(whole.frame());
        checkSameAgain(whole.frame());
        checkCommand(whole.frame().text());
    }
    checkCommand(QString::fromUtf8(bytes, count).left(HandoffFrame::MostCharacters));
    return 0;
}
