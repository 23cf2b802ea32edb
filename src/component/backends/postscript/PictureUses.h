#pragma once

#include "component/backends/postscript/MarkLibrary.h"
#include "component/backends/postscript/Matrix.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <map>
#include <string>

namespace Quorlin {

/// Finds pictures that pages draw more than once, so that their data is printed only once.
///
/// Whoever draws a picture asks in the order in which the pages are printed.
class PictureUses
{
public:
    explicit PictureUses(MarkLibrary &library) : m_library(library) {}

    struct Use
    {
        std::string mark; ///< XObject to draw, or nothing
        bool again;       ///< the XObject takes the place of the picture, else it comes before it
    };

    /// @param place maps the unit square to the place of the picture, in points.
    [[nodiscard]] Use use(QPDFObjectHandle picture, const Matrix &place);

    /// Takes the marks before those pictures back that are not drawn again.
    void finish();

private:
    struct Kept
    {
        int serial = 0;
        double width = 0;
        double height = 0;
        std::string mark;
        bool again = false;
    };

    void takeBack(const Kept &kept);

    MarkLibrary &m_library;
    std::map<QPDFObjGen, Kept> m_kept;
};

} // namespace Quorlin
