#include "ExpectedElements.h"

namespace Quorlin {

// clang-format off
const QList<ExpectedElement> &ExpectedElement::all()
{
    static const QList<ExpectedElement> rows{
        {"FormMain", "Icon", "position", true, 8, 8, 1, 1, false, true, "imgIcon"},
        {"FormMain", "Title", "geometry", true, 30, 8, 150, 15, false, true, "lblTitle"},
        {"FormMain", "Main", "window", false, 0, 0, 421, 311, true, true, "window"},
        {"FormMain", "Close", "geometry", false, 400, 5, 18, 18, true, true, "lblClose"},
        {"FormMain", "Help", "geometry", false, 380, 5, 18, 18, true, true, "LblHelp"},
        {"Info", "Info", "picture", false, 0, 0, 0, 0, true, true, "PctInfo"},
        {"Info", "ZoneInfo", "geometry", false, 51, 80, 321, 65, true, true, "PctInfo"},
        {"Info", "LabelInfo", "geometry", false, 64, 32, 249, 25, true, true, "LblInfo"},
        {"Liste", "List", "geometry", false, 47, 39, 329, 173, true, true, "LstFile"},
        {"Liste", "BtnFirst", "geometry", false, 379, 67, 22, 22, true, true, "LblFirst"},
        {"Liste", "BtnPrevious", "geometry", false, 21, 67, 22, 22, true, true, "LblPrevious"},
        {"Liste", "BtnNext", "geometry", false, 21, 161, 22, 22, true, true, "LblNext"},
        {"Liste", "BtnLast", "geometry", false, 379, 161, 22, 22, true, true, "LblLast"},
        {"ProgressBar", "ProgressBar", "geometry", false, 36, 289, 350, 14, true, true, "BarProgress"},
        {"Options", "ChkMail", "geometry", false, 39, 200, 13, 13, true, true, "OptMail"},
        {"Options", "ChkShow", "geometry", false, 39, 220, 13, 13, true, true, "OptShow"},
        {"Options", "ChkLink", "geometry", false, 39, 239, 13, 13, true, true, "OptLink"},
        {"Options", "OptMail", "geometry", false, 61, 200, 250, 17, true, true, "LblMail"},
        {"Options", "OptShow", "geometry", false, 61, 219, 137, 15, true, true, "LblShow"},
        {"Options", "OptLink", "geometry", false, 61, 238, 112, 15, true, true, "LblLink"},
        {"Compress", "LibCompress", "geometry", true, 141, 260, 142, 15, true, true, "LblCompress"},
        {"Compress", "CmbCompress", "geometry", false, 38, 257, 100, 21, true, true, "cmbCompression"},
        {"Convert", "LibConvert", "geometry", true, 312, 257, 64, 15, true, true, "LblLibConvert"},
        {"Convert", "BtnConvert", "geometry", false, 288, 254, 100, 22, true, true, "LblConvert"},
        {"FormAbout", "AboutIcon", "position", false, 8, 8, 1, 1, false, false, "imgAboutIcon"},
        {"FormAbout", "AboutTitle", "geometry", false, 130, 8, 235, 17, true, false, "lblAboutTitle"},
        {"FormAbout", "About", "window", false, 0, 0, 421, 200, true, false, "window"},
        {"FormAbout", "AboutClose", "geometry", false, 397, 5, 18, 18, true, false, "lblAboutClose"},
        {"FormAbout", "AboutProductName", "geometry", false, 16, 32, 201, 25, true, false, "lblProductName"},
        {"FormAbout", "AboutCopyright", "geometry", false, 200, 32, 209, 17, true, false, "lblCopyright"},
        {"FormAbout", "AboutAdobeLogo", "geometry", false, 16, 110, 41, 53, true, false, "immAdobeLogo"},
        {"FormAbout", "AboutAdobeTitle", "geometry", false, 64, 110, 329, 25, true, false, "lblAdobeTitle"},
        {"FormAbout", "AboutAdobeInfo", "geometry", false, 64, 128, 353, 33, true, false, "lblAdobeInfo"},
        {"FormAbout", "AboutAdobeCopyright", "geometry", false, 16, 176, 393, 17, true, false, "lblAdobeCopyright"},
    };
    return rows;
}
// clang-format on

const QList<const char *> &ExpectedElement::mainOrder()
{
    // The information panel gets its picture and then its place, as one run.
    static const QList<const char *> names{
        "window",      "imgIcon",        "lblTitle",    "lblClose",    "LblHelp",      "PctInfo",
        "LblInfo",     "LstFile",        "LblFirst",    "LblPrevious", "LblNext",      "LblLast",
        "BarProgress", "OptMail",        "LblMail",     "OptShow",     "LblShow",      "OptLink",
        "LblLink",     "cmbCompression", "LblCompress", "LblConvert",  "LblLibConvert"};
    return names;
}

const QList<const char *> &ExpectedElement::aboutOrder()
{
    static const QList<const char *> names{
        "window",       "imgAboutIcon", "lblAboutTitle", "lblAboutClose", "lblProductName",
        "lblCopyright", "immAdobeLogo", "lblAdobeTitle", "lblAdobeInfo",  "lblAdobeCopyright"};
    return names;
}

} // namespace Quorlin
