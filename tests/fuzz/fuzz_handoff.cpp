#include "fuzz/FuzzTarget.h"

#include "app/FrameReader.h"

#include <algorithm>
#include <cstdlib>

using Quorlin::FrameReader;
using Quorlin::HandoffFrame;

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

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
    }
    return 0;
}
