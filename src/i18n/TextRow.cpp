#include "i18n/TextRow.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

using enum TextKey;
using enum TextCheck;

constexpr QLatin1StringView operator""_l(const char *text, std::size_t size)
{
    return QLatin1StringView(text, static_cast<qsizetype>(size));
}

// The odd spellings are the product's own.
// clang-format off
constexpr std::array Rows{
    TextRow{AppWindowTitle, "APP"_l, "AppWindowTitle"_l, "Quorlin"_l, None},

    TextRow{TextBtnConvert, "TEXT"_l, "TextBtnConvert"_l, "Convert"_l, Required},
    TextRow{TextLblCompress, "TEXT"_l, "TextLblCompress"_l, "Compression"_l, Required},
    TextRow{TextOptMail, "TEXT"_l, "TextOptMail"_l, "Send result by mail"_l, Required},
    TextRow{TextOptShow, "TEXT"_l, "TextOptShow"_l, "Show result file"_l, Required},
    TextRow{TextOptLink, "TEXT"_l, "TextOptLink"_l, "Merge files"_l, Required},
    TextRow{TextInfoInProgress, "TEXT"_l, "TextInfoInProgress"_l,
            "Conversion in progress ..."_l, Required},

    TextRow{AboutTitle, "ABOUT"_l, "AboutTitle"_l, "About"_l, Required},
    TextRow{AboutCopyright, "ABOUT"_l, "AboutCopyright"_l, "Copyright :"_l, Required},
    TextRow{AboutAdobeTitle, "ABOUT"_l, "AboutAdobeTitle"_l, "Adobe PDF Library"_l, Required},
    TextRow{AboutAdobeInformations, "ABOUT"_l, "AboutAdobeInformations"_l,
            "Portions contain an implementation of the LZW\r\n"
            "algorithm licensed under US Patent 4,558,302"_l,
            Required},
    TextRow{AboutAdobeTrademarks, "ABOUT"_l, "AboutAdobeTrademarks"_l,
            "Adobe(r) and Adobe PDF Library are trademarks of Adobe Systems Incorporated"_l, Required},

    TextRow{DialogOpenTitle, "DIALOG"_l, "DialogOpenTitle"_l, "Open file"_l, Required},
    TextRow{DialogSaveTitle, "DIALOG"_l, "DialogSaveTitle"_l, "Save file ..."_l, Required},
    TextRow{DialogAllValidExtension, "DIALOG"_l, "DialogAllValidExtension"_l, "All"_l, Required},
    TextRow{DialogWordExtension, "DIALOG"_l, "DialogWordExtension"_l, "Word document"_l, Required},
    TextRow{DialogExcelExtension, "DIALOG"_l, "DialogExcelExtension"_l,
            "Excel document"_l, Required},
    TextRow{DialogPowerpointExtension, "DIALOG"_l, "DialogPowerpointExtension"_l,
            "Powerpoint document"_l, Required},
    TextRow{DialogPDFExtension, "DIALOG"_l, "DialogPDFExtension"_l, "Adobe PDF"_l, Required},

    TextRow{MenuLstOpen, "MENU"_l, "MenuLstOpen"_l, "Open"_l, Required},
    TextRow{MenuLstAdd, "MENU"_l, "MenuLstAdd"_l, "Add ..."_l, Required},
    TextRow{MenuLstRemove, "MENU"_l, "MenuLstRemove"_l, "Remove"_l, Required},
    TextRow{MenuLstClear, "MENU"_l, "MenuLstClear"_l, "Clear"_l, Required},
    TextRow{MenuLstMove, "MENU"_l, "MenuLstMove"_l, "Move"_l, Required},
    TextRow{MenuLstFirst, "MENU"_l, "MenuLstFirst"_l, "First"_l, Required},
    TextRow{MenuLstPrevious, "MENU"_l, "MenuLstPrevious"_l, "Previous"_l, Required},
    TextRow{MenuLstNext, "MENU"_l, "MenuLstNext"_l, "Next"_l, Required},
    TextRow{MenuLstLast, "MENU"_l, "MenuLstLast"_l, "Last"_l, Required},
    TextRow{MenuAppSkin, "MENU"_l, "MenuAppSkin"_l, "Skin ..."_l, Required},
    TextRow{MenuAppLanguage, "MENU"_l, "MenuAppLanguage"_l, "Language ..."_l, Required},
    TextRow{MenuAppClassic, "MENU"_l, "MenuAppClassic"_l, "Quorlin Classic"_l, Required},
    TextRow{MenuAppAdvanced, "MENU"_l, "MenuAppAdvanced"_l, "Quorlin Advanced"_l, Required},
    TextRow{MenuAppAbout, "MENU"_l, "MenuAppAbout"_l, "About"_l, Required},

    TextRow{InfoWindowTitle, "INFO"_l, "InfoWindowTitle"_l, "Information"_l, Required},
    TextRow{InfoEndConvert, "INFO"_l, "InfoEndConvert"_l, "File(s) converted"_l, Required},
    TextRow{InfoFileAlreadyConverted, "INFO"_l, "InfoFileAlreadyConverted"_l,
            "The file is already converted"_l, PairFirst},
    TextRow{InfoFilesAlreadyConverted, "INFO"_l, "InfoFilesAlreadyConverted"_l,
            "The files are already converted"_l, PairSecond},
    TextRow{InfoPrint, "INFO"_l, "InfoPrint"_l, "Printing documents ..."_l, Required},
    TextRow{InfoConvert, "INFO"_l, "InfoConvert"_l, "Converting documents ..."_l, Required},
    TextRow{InfoMerge, "INFO"_l, "InfoMerge"_l, "Merging documents ..."_l, Required},

    TextRow{ErrorWindowTitle, "ERROR"_l, "ErrorWindowTitle"_l, "Error"_l, Required},
    TextRow{ErrorPDFLibNotFound, "ERROR"_l, "ErrorPDFLibNotFound"_l,
            "Can't found the PDF library : the program will shut down"_l, Required},
    TextRow{ErrorPDFLibPrint, "ERROR"_l, "ErrorPDFLibPrint"_l, "Error during print"_l, Required},
    TextRow{ErrorPDFLibConvert, "ERROR"_l, "ErrorPDFLibConvert"_l,
            "Error during convertion"_l, Required},
    TextRow{ErrorPDFLibMerge, "ERROR"_l, "ErrorPDFLibMerge"_l, "Error during merge"_l, Required},
    TextRow{ErrorLanguageNotFound1, "ERROR"_l, "ErrorLanguageNotFound1"_l,
            "Can't load"_l, PairFirst},
    TextRow{ErrorLanguageNotFound2, "ERROR"_l, "ErrorLanguageNotFound2"_l,
            "language : file not found or in use"_l, PairSecond},
    TextRow{ErrorLanguageInvalid1, "ERROR"_l, "ErrorLanguageInvalid1"_l,
            "The language file"_l, PairFirst},
    TextRow{ErrorLanguageInvalid2, "ERROR"_l, "ErrorLanguageInvalid2"_l,
            "is corrupted"_l, PairSecond},
    TextRow{ErrorSkinNotFound1, "ERROR"_l, "ErrorSkinNotFound1"_l, "Can't load"_l, PairFirst},
    TextRow{ErrorSkinNotFound2, "ERROR"_l, "ErrorSkinNotFound2"_l,
            "skin : files not found or in use"_l, PairSecond},
    TextRow{ErrorSkinInvalid1, "ERROR"_l, "ErrorSkinInvalid1"_l, "The skin files"_l, PairFirst},
    TextRow{ErrorSkinInvalid2, "ERROR"_l, "ErrorSkinInvalid2"_l, "are corrupted"_l, PairSecond},
    TextRow{ErrorPrintFilename1, "ERROR"_l, "ErrorPrintFilename1"_l,
            "Can't print the file"_l, PairFirst},
    TextRow{ErrorPrintFilename2, "ERROR"_l, "ErrorPrintFilename2"_l, "."_l, PairSecond},
    TextRow{ErrorCopyFilename1, "ERROR"_l, "ErrorCopyFilename1"_l,
            "Can't copy the file in"_l, PairFirst},
    TextRow{ErrorCopyFilename2, "ERROR"_l, "ErrorCopyFilename2"_l, "."_l, PairSecond},
    TextRow{ErrorProtectedFilename, "ERROR"_l, "ErrorProtectedFilename"_l,
            "The file is protected in write, can't overwirte."_l, Required},
    TextRow{ErrorConvertFile1, "ERROR"_l, "ErrorConvertFile1"_l,
            "Error during conversion of the file"_l, PairFirst},
    TextRow{ErrorConvertFile2, "ERROR"_l, "ErrorConvertFile2"_l, ":"_l, PairSecond},
    TextRow{ErrorMergeFile1, "ERROR"_l, "ErrorMergeFile1"_l,
            "Error during merge with the file"_l, PairFirst},
    TextRow{ErrorMergeFile2, "ERROR"_l, "ErrorMergeFile2"_l, ":"_l, PairSecond},
    TextRow{ErrorInvalidPRNFile1, "ERROR"_l, "ErrorInvalidPRNFile1"_l, "The file '"_l, PairFirst},
    TextRow{ErrorInvalidPRNFile2, "ERROR"_l, "ErrorInvalidPRNFile2"_l,
            "' is not a valid PostScript format."_l, PairSecond},
};
// clang-format on

constexpr bool everyRowStandsAtItsKey()
{
    for (std::size_t at = 0; at < Rows.size(); ++at) {
        if (Rows[at].index() != at)
            return false;
    }
    return Rows.back().key == ErrorInvalidPRNFile2;
}

constexpr bool pairsStandTogether()
{
    for (std::size_t at = 0; at < Rows.size(); ++at) {
        const auto first = at > 0 && Rows[at - 1].check == PairFirst;
        if ((Rows[at].check == PairSecond) != first)
            return false;
    }
    return Rows.back().check != PairFirst;
}

static_assert(everyRowStandsAtItsKey());
static_assert(pairsStandTogether());

} // namespace

std::span<const TextRow> TextRow::all()
{
    return Rows;
}

const TextRow &TextRow::of(TextKey key)
{
    return Rows.at(static_cast<std::size_t>(key));
}

const TextRow *TextRow::find(QStringView name)
{
    const auto *const found =
        std::ranges::find_if(Rows, [name](const auto &row) { return name == row.name; });
    return found == Rows.end() ? nullptr : found;
}

} // namespace Quorlin
