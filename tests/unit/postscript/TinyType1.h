#pragma once

#include <QByteArray>

/// A Type 1 program with one square glyph beside .notdef, small enough to be written by hand.
class TinyType1
{
public:
    /// @param glyph the name of the glyph, which the code 65 shows.
    explicit TinyType1(const QByteArray &name, const QByteArray &glyph)
        : m_clear("%!FontType1-1.0: Tiny 1\n11 dict begin\n/FontName /" + name +
                  " def\n/FontType 1 def /PaintType 0 def\n/FontMatrix [0.001 0 0 0.001 0 0] "
                  "readonly def\n/FontBBox {0 0 500 700} readonly def\n/Encoding 256 array\n"
                  "0 1 255 {1 index exch /.notdef put} for\ndup 65 /" +
                  glyph + " put\nreadonly def\ncurrentdict end\ncurrentfile eexec\n"),
          m_hidden(encrypted(secrets(glyph), 55665))
    {
    }

    [[nodiscard]] QByteArray program() const { return m_clear + m_hidden + trailer(); }

    /// The lengths of the program's parts, as a font file's dictionary has them.
    [[nodiscard]] QByteArray lengths() const
    {
        return "/Length1 " + QByteArray::number(m_clear.size()) + " /Length2 " +
               QByteArray::number(m_hidden.size()) + " /Length3 " +
               QByteArray::number(trailer().size());
    }

private:
    static QByteArray encrypted(const QByteArray &plain, unsigned key)
    {
        QByteArray result;
        for (const char c : QByteArray(4, '\0') + plain) {
            const unsigned byte = static_cast<unsigned char>(c) ^ (key >> 8);
            key = ((byte + key) * 52845U + 22719U) & 0xffffU;
            result.append(static_cast<char>(byte));
        }
        return result;
    }

    static QByteArray number(int value) // from -1131 to 1131
    {
        if (value >= -107 && value <= 107)
            return QByteArray(1, static_cast<char>(value + 139));
        const int rest = (value > 0 ? value : -value) - 108;
        return QByteArray(1, static_cast<char>((value > 0 ? 247 : 251) + rest / 256)) +
               static_cast<char>(rest % 256);
    }

    static QByteArray entry(const QByteArray &name, const QByteArray &drawing)
    {
        const auto code = encrypted(number(0) + number(500) + '\x0d' + drawing + '\x0e', 4330);
        return "/" + name + " " + QByteArray::number(code.size()) + " RD " + code + " ND\n";
    }

    static QByteArray secrets(const QByteArray &glyph)
    {
        const auto square = number(400) + '\x06' + number(700) + '\x07' + number(-400) + '\x06' +
                            '\x09'; // a line to the right, up, to the left, and back
        return "dup /Private 8 dict dup begin\n/RD {string currentfile exch readstring pop} "
               "executeonly def\n/ND {noaccess def} executeonly def\n/NP {noaccess put} "
               "executeonly def\n/BlueValues [] def\n/MinFeature {16 16} def\n/password 5839 "
               "def\n2 index /CharStrings 2 dict dup begin\n" +
               entry(".notdef", {}) + entry(glyph, square) +
               "end\nend\nreadonly put\nnoaccess put\ndup/FontName get exch definefont pop\nmark "
               "currentfile closefile\n";
    }

    static QByteArray trailer()
    {
        return (QByteArray(64, '0') + "\n").repeated(8) + "cleartomark\n";
    }

    QByteArray m_clear;
    QByteArray m_hidden;
};
