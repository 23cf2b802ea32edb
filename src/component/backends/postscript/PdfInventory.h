#pragma once

#include "component/backends/postscript/PageGeometry.h"

#include <QString>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Quorlin {

/// Where in a page a destination points, in the page's own coordinates.
struct PdfView
{
    std::string type = "XYZ"; ///< XYZ, Fit, FitH, FitV, FitR, FitB, FitBH or FitBV
    std::vector<std::optional<double>> values;
};

/// What happens when a link or a bookmark is followed.
struct PdfTarget
{
    enum class Kind {
        None,
        Uri,        ///< text: the address
        Page,       ///< page and view
        Name,       ///< text: a named destination of this document
        RemoteFile, ///< text: a file; page and view, or name
        Launch,     ///< text: a file
        Command,    ///< text: a viewer's command such as NextPage
    };

    Kind kind = Kind::None;
    std::string text;
    std::string name;
    int page = 0; ///< from 1; 0 when unknown
    PdfView view;
};

struct PdfLink
{
    Box rect{}; ///< in the page's coordinates
    std::vector<double> border;
    std::vector<double> dash;
    std::vector<double> color;
    std::string highlight; ///< N, I, O, P or empty
    PdfTarget target;
};

struct PdfBookmark
{
    QString title;
    bool open = false;
    int style = 0; ///< 1 italic, 2 bold
    std::vector<double> color;
    PdfTarget target;
    std::vector<PdfBookmark> children;
};

struct PdfDestination
{
    std::string name;
    int page = 0;
    PdfView view;
};

/// A range of page labels.
struct PdfLabels
{
    int firstPage = 0; ///< from 0
    std::string style; ///< D, R, r, A, a or empty
    QString prefix;
    int start = 1;
};

/// What a PDF holds besides the marks on its pages.
struct PdfInventory
{
    std::vector<PageGeometry> pages;
    std::vector<std::vector<PdfLink>> links; ///< of each page
    std::vector<PdfBookmark> bookmarks;
    std::vector<PdfDestination> destinations;
    std::vector<std::pair<std::string, QString>> info; ///< Title, Author, …; empty ones left out
    std::vector<PdfLabels> labels;
    std::string pageMode;
    std::string pageLayout;
    QString language;
    bool showsTitle = false; ///< viewers show the title instead of the file's name
    PdfTarget openAction;
};

} // namespace Quorlin
