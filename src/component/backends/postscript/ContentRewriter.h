#pragma once

#include "component/backends/postscript/ContentScanner.h"
#include "component/backends/postscript/GraphicsStateMarks.h"
#include "component/backends/postscript/Matrix.h"
#include "component/backends/postscript/PictureUses.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Quorlin {

/// Puts marks into one content stream.
///
/// The result draws the same as before, with marks after each parameter dictionary, before each
/// picture with a soft mask and around invisible text. Every q gets its Q and surplus ones go,
/// so that the result can be bracketed.
class ContentRewriter
{
public:
    /// What to draw for the names of a stream's resources; names without their slash.
    struct Names
    {
        const std::map<std::string, GraphicsStateMarks> &states;
        /// XObjects to draw before an image of that name
        const std::map<std::string, std::vector<std::string>> &maskedImages;
        /// XObjects that do the work of a shading of that name
        const std::map<std::string, std::string> &shadings;
        /// XObjects that start a span for the property list of that name
        const std::map<std::string, std::string> &spans;
        /// The XObject that starts a span which stands for this text
        std::function<std::string(const std::u16string &)> startSpan;
        std::string endSpan;   ///< XObject that ends a span
        std::string invisible; ///< XObject that starts invisible text
        std::string visible;   ///< XObject that ends it
        /// Told of each opaque picture with the name and the place of its unit square, in points
        std::function<PictureUses::Use(const std::string &, const Matrix &)> usePicture;
    };

    explicit ContentRewriter(const Names &names);

    /// The rewritten content, or nothing when it breaks off in the middle and must stay as it is.
    [[nodiscard]] std::optional<std::string> rewrite(std::string_view content);

    /// The XObjects that the last result draws.
    [[nodiscard]] const MarkNames &used() const { return m_used; }

private:
    struct Level
    {
        Matrix matrix; ///< to the coordinates at the start of the stream
        const MaskMarks *mask = nullptr;
        bool isPlain = true; ///< no parameter dictionary has made anything transparent
        Matrix maskMatrix;   ///< the matrix when the mask was put into effect
    };

    void handle(const ContentScanner &scanner);
    void save();
    void restore(const ContentScanner &scanner);
    void applyState(const ContentScanner &scanner);
    void drawObject(const ContentScanner &scanner);
    void shade(const ContentScanner &scanner);
    void beginContent(const ContentScanner &scanner);
    void endContent(const ContentScanner &scanner);
    void setTextMode(const ContentScanner &scanner);
    void copyTo(std::size_t end);
    void dropTo(std::size_t end) { m_copied = end; }
    void draw(const std::string &name);
    void drawMask(const MaskMarks &mask);

    const Names &m_names;
    std::string_view m_content;
    std::string m_out;
    std::size_t m_copied = 0;
    std::vector<Level> m_levels;
    MarkNames m_used;
    std::vector<bool> m_contents; ///< marked content that is open: whether it is our span
    bool m_inSpan = false;
    bool m_invisible = false;
};

} // namespace Quorlin
