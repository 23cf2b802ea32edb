#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

/// A TrueType program with a few square glyphs, small enough to be written by hand.
///
/// Glyph 0 is .notdef; code n of the (1,0) character map shows glyph n.
class TinyFont
{
public:
    [[nodiscard]] static QByteArray program(int glyphs)
    {
        QList<QPair<QByteArray, QByteArray>> tables;
        tables.append({"cmap", cmap(glyphs)});
        tables.append({"glyf", glyf(glyphs)});
        tables.append({"head", head()});
        tables.append({"hhea", hhea(glyphs)});
        tables.append({"hmtx", hmtx(glyphs)});
        tables.append({"loca", loca(glyphs)});
        tables.append({"maxp", maxp(glyphs)});
        QByteArray directory = u32(0x00010000) + u16(tables.size()) + u16(64) + u16(2) + u16(48);
        QByteArray body;
        const auto start = 12 + 16 * tables.size();
        for (const auto &[tag, data] : tables) {
            directory += tag + u32(0) + u32(start + body.size()) + u32(data.size());
            body += data;
            body.append((4 - body.size() % 4) % 4, '\0');
        }
        return directory + body;
    }

private:
    static QByteArray u16(qint64 v)
    {
        return QByteArray(1, static_cast<char>(v >> 8)) + static_cast<char>(v);
    }
    static QByteArray u32(qint64 v) { return u16(v >> 16) + u16(v & 0xffff); }

    static QByteArray square()
    {
        QByteArray glyph = u16(1) + u16(50) + u16(0) + u16(450) + u16(700) + u16(3) + u16(0);
        glyph += QByteArray("\x01\x01\x01\x01", 4);
        glyph += u16(50) + u16(400) + u16(0) + u16(-400);
        glyph += u16(0) + u16(0) + u16(700) + u16(0);
        return glyph + QByteArray(2, '\0');
    }
    static QByteArray glyf(int glyphs) { return square().repeated(glyphs); }
    static QByteArray loca(int glyphs)
    {
        QByteArray table;
        for (int i = 0; i <= glyphs; ++i)
            table += u32(i * square().size());
        return table;
    }
    static QByteArray head()
    {
        return u32(0x00010000) + u32(0x00010000) + u32(0) + u32(0x5f0f3cf5) + u16(3) + u16(1000) +
               QByteArray(16, '\0') + u16(0) + u16(0) + u16(500) + u16(700) + u16(0) + u16(8) +
               u16(2) + u16(1) + u16(0);
    }
    static QByteArray hhea(int glyphs)
    {
        return u32(0x00010000) + u16(800) + u16(-200) + u16(0) + u16(500) + QByteArray(20, '\0') +
               u16(0) + u16(glyphs);
    }
    static QByteArray hmtx(int glyphs) { return (u16(500) + u16(50)).repeated(glyphs); }
    static QByteArray maxp(int glyphs)
    {
        return u32(0x00010000) + u16(glyphs) + u16(4) + u16(1) + QByteArray(22, '\0');
    }
    static QByteArray cmap(int glyphs)
    {
        QByteArray map(256, '\0');
        for (int i = 0; i < glyphs; ++i)
            map[i] = static_cast<char>(i);
        return u16(0) + u16(1) + u16(1) + u16(0) + u32(12) + u16(0) + u16(262) + u16(0) + map;
    }
};
