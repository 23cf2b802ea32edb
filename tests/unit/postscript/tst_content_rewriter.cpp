#include "component/backends/postscript/ContentRewriter.h"

#include <QTest>

using namespace Quorlin;

class TestContentRewriter : public QObject
{
    Q_OBJECT

private:
    std::map<std::string, GraphicsStateMarks> m_states;
    std::map<std::string, std::vector<std::string>> m_images;
    std::map<std::string, std::string> m_shadings;
    std::map<std::string, std::string> m_spans;
    std::string m_invisible;
    std::string m_visible;

    QByteArray rewritten(std::string_view content)
    {
        const ContentRewriter::Names names{m_states,
                                           m_images,
                                           m_shadings,
                                           m_spans,
                                           [](const std::u16string &text) {
                                               return "Say" +
                                                      QString::fromStdU16String(text).toStdString();
                                           },
                                           "SpanEnd",
                                           m_invisible,
                                           m_visible};
        const auto result = ContentRewriter(names).rewrite(content);
        return result ? QByteArray::fromStdString(*result).simplified() : QByteArray("as it was");
    }

private Q_SLOTS:
    void init()
    {
        m_states.clear();
        m_images.clear();
        m_shadings.clear();
        m_spans.clear();
        m_invisible.clear();
        m_visible.clear();
    }

    void contentWithoutMarksStaysAsItIs()
    {
        QCOMPARE(rewritten("q 1 0 0 1 5 5 cm /X Do Q"), QByteArray("q 1 0 0 1 5 5 cm /X Do Q"));
    }

    void transparencyFollowsItsParameterDictionary()
    {
        m_states["G"].values = "A";
        QCOMPARE(rewritten("/G gs 0 0 1 1 re f"), QByteArray("/G gs /A Do 0 0 1 1 re f"));
    }

    void escapedNamesAreFound()
    {
        m_states["G s"].values = "A";
        QCOMPARE(rewritten("/G#20s gs"), QByteArray("/G#20s gs /A Do"));
    }

    void aMaskIsPaintedWhereItIsSet()
    {
        m_states["G"].mask = MaskMarks{"B", "F", "E"};
        QCOMPARE(rewritten("q /G gs f Q"), QByteArray("q /G gs /B Do q /F Do Q /E Do f Q"));
    }

    void anOuterMaskComesBackAfterAnInnerOne()
    {
        m_states["G"].mask = MaskMarks{"B", "F", "E"};
        m_states["H"].mask = MaskMarks{"b", "f", "e"};
        QCOMPARE(rewritten("/G gs 2 0 0 2 0 0 cm q /H gs f Q f"),
                 QByteArray("/G gs /B Do q /F Do Q /E Do 2 0 0 2 0 0 cm q /H gs /b Do q /f Do Q "
                            "/e Do f Q 0.5 0 0 0.5 0 0 cm /B Do q /F Do Q /E Do 2 0 0 2 0 0 cm f"));
    }

    void pairsOfSaveAndRestoreAreCompleted()
    {
        m_states["G"].values = "A";
        QCOMPARE(rewritten("Q q q /G gs"), QByteArray("q q /G gs /A Do Q Q"));
    }

    void aMaskedPictureGetsItsMaskFirst()
    {
        m_images["I"] = {"M1", "M2"};
        QCOMPARE(rewritten("q /I Do Q /J Do"), QByteArray("q /M1 Do /M2 Do /I Do Q /J Do"));
    }

    void shadingsAreReplaced()
    {
        m_shadings["S"] = "T";
        QCOMPARE(rewritten("/S sh /U sh"), QByteArray("/T Do /U sh"));
    }

    void invisibleTextIsDrawnUnderAMark()
    {
        m_invisible = "I";
        m_visible = "V";
        QCOMPARE(rewritten("0 Tr (a) Tj 3 Tr (b) Tj 0 Tr (c) Tj"),
                 QByteArray("0 Tr (a) Tj 0 Tr /I Do (b) Tj 0 Tr /V Do (c) Tj"));
    }

    void textInPlaceOfGlyphsIsMarked()
    {
        QCOMPARE(rewritten("/Span<</ActualText<FEFF0041>>>BDC (x) Tj EMC /P BMC (y) Tj EMC"),
                 QByteArray("/Span<</ActualText<FEFF0041>>>BDC /SayA Do (x) Tj /SpanEnd Do EMC "
                            "/P BMC (y) Tj EMC"));
    }

    void textFromANamedPropertyListIsMarked()
    {
        m_spans["P0"] = "S";
        QCOMPARE(rewritten("/Span /P0 BDC /Q BMC EMC (x) Tj EMC"),
                 QByteArray("/Span /P0 BDC /S Do /Q BMC EMC (x) Tj /SpanEnd Do EMC"));
    }

    void anOpenSpanIsClosedAtTheEnd()
    {
        m_spans["P0"] = "S";
        QCOMPARE(rewritten("/Span /P0 BDC (x) Tj"),
                 QByteArray("/Span /P0 BDC /S Do (x) Tj /SpanEnd Do"));
    }

    void contentThatBreaksOffIsLeftAlone()
    {
        m_states["G"].values = "A";
        QCOMPARE(rewritten("/G gs (open"), QByteArray("as it was"));
    }

    void endlessNestingIsLeftAlone()
    {
        QCOMPARE(rewritten(QByteArray("q ").repeated(50000).toStdString()),
                 QByteArray("as it was"));
    }
};

QTEST_APPLESS_MAIN(TestContentRewriter)
#include "tst_content_rewriter.moc"
