#pragma once

#include "component/backends/postscript/GraphicsStateMarks.h"
#include "component/backends/postscript/MarkLibrary.h"
#include "component/backends/postscript/PictureUses.h"
#include "component/backends/postscript/TextFonts.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Quorlin {

/// Rewrites the contents of pages and forms so that transparency and invisible text survive a
/// printing tool that knows neither.
///
/// Each stream is rewritten at most once and only when it needs marks; all others stay as they
/// are. Streams that cannot be decoded are left alone and print opaquely.
class ContentMarks
{
public:
    /// What the marks of a document are for.
    struct Purpose
    {
        bool transparency = false;  ///< something in the document looks through
        bool invisibleText = false; ///< look for text that is only there to be found
    };

    /// @param texts takes the texts that contents give in place of glyphs.
    ContentMarks(QPDF &pdf, MarkLibrary &library, TextFonts &texts, Purpose purpose);

    /// Rewrites a page with its forms and the appearances of its annotations. The page gets
    /// resources of its own with the marks.
    void markPage(QPDFObjectHandle page);

    /// To be called after the last page.
    void finish() { m_uses.finish(); }

private:
    /// The marks for the resources of a stream, by the names that its content uses.
    struct Scope
    {
        QPDFObjectHandle resources;
        std::map<std::string, GraphicsStateMarks> states;
        std::map<std::string, std::vector<std::string>> maskedImages;
        std::map<std::string, QPDFObjectHandle> pictures;
        std::map<std::string, std::string> shadings;
        std::map<std::string, std::string> spans;
        MarkNames names;     ///< what the forms inside draw
        bool hasOwn = false; ///< the content itself needs marks
        bool blends = false; ///< it or a form inside uses a blend mode
    };

    Scope &scopeOf(QPDFObjectHandle resources);
    void fill(Scope &scope, QPDFObjectHandle resources);
    void readStates(Scope &scope);
    void readImages(Scope &scope);
    void readShadings(Scope &scope);
    void readSpans(Scope &scope);
    void markForms(Scope &scope);
    void markPatterns(Scope &scope);
    void addMarks(QPDFObjectHandle resources, const MarkNames &names);
    const GraphicsStateMarks &stateMarks(QPDFObjectHandle states, const std::string &name);
    std::vector<std::string> imageMarks(QPDFObjectHandle image);
    const MarkNames &markForm(QPDFObjectHandle form, QPDFObjectHandle inherited);
    MarkNames rewriteForm(QPDFObjectHandle form, QPDFObjectHandle inherited);
    void markAppearance(QPDFObjectHandle appearance, QPDFObjectHandle inherited, MarkNames &names);
    void markAnnotations(QPDFObjectHandle page, QPDFObjectHandle inherited, MarkNames &names);
    [[nodiscard]] bool needsMarks(const Scope &scope, const std::string &content) const;
    std::optional<std::string> rewrite(const Scope &scope, const std::string &content,
                                       MarkNames &names, bool isPage);
    [[nodiscard]] std::string groupBegin(QPDFObjectHandle form, bool blends) const;

    QPDF &m_pdf;
    MarkLibrary &m_library;
    TextFonts &m_texts;
    Purpose m_purpose;
    PictureUses m_uses;
    std::map<QPDFObjGen, GraphicsStateMarks> m_states;
    std::map<QPDFObjGen, std::vector<std::string>> m_images;
    std::map<QPDFObjGen, std::string> m_shadings;
    std::map<QPDFObjGen, MarkNames> m_forms;
    std::map<QPDFObjGen, bool> m_formBlends;
    std::map<QPDFObjGen, std::unique_ptr<Scope>> m_scopes;
    std::vector<std::unique_ptr<Scope>> m_directScopes;
    int m_depth = 0;
};

} // namespace Quorlin
