#include "ExpectedTexts.h"

namespace {

using enum ExpectedText::Check;

// clang-format off
const ExpectedText Texts[]{
    {"APP", "AppWindowTitle", "Quorlin", None},

    {"TEXT", "TextBtnConvert", "Convert", Required},
    {"TEXT", "TextLblCompress", "Compression", Required},
    {"TEXT", "TextOptMail", "Send result by mail", Required},
    {"TEXT", "TextOptShow", "Show result file", Required},
    {"TEXT", "TextOptLink", "Merge files", Required},
    {"TEXT", "TextInfoInProgress", "Conversion in progress ...", Required},

    {"ABOUT", "AboutTitle", "About", Required},
    {"ABOUT", "AboutCopyright", "Copyright :", Required},
    {"ABOUT", "AboutAdobeTitle", "Adobe PDF Library", Required},
    {"ABOUT", "AboutAdobeInformations",
     "Portions contain an implementation of the LZW\r\n"
     "algorithm licensed under US Patent 4,558,302", Required},
    {"ABOUT", "AboutAdobeTrademarks",
     "Adobe(r) and Adobe PDF Library are trademarks of Adobe Systems Incorporated", Required},

    {"DIALOG", "DialogOpenTitle", "Open file", Required},
    {"DIALOG", "DialogSaveTitle", "Save file ...", Required},
    {"DIALOG", "DialogAllValidExtension", "All", Required},
    {"DIALOG", "DialogWordExtension", "Word document", Required},
    {"DIALOG", "DialogExcelExtension", "Excel document", Required},
    {"DIALOG", "DialogPowerpointExtension", "Powerpoint document", Required},
    {"DIALOG", "DialogPDFExtension", "Adobe PDF", Required},

    {"MENU", "MenuLstOpen", "Open", Required},
    {"MENU", "MenuLstAdd", "Add ...", Required},
    {"MENU", "MenuLstRemove", "Remove", Required},
    {"MENU", "MenuLstClear", "Clear", Required},
    {"MENU", "MenuLstMove", "Move", Required},
    {"MENU", "MenuLstFirst", "First", Required},
    {"MENU", "MenuLstPrevious", "Previous", Required},
    {"MENU", "MenuLstNext", "Next", Required},
    {"MENU", "MenuLstLast", "Last", Required},
    {"MENU", "MenuAppSkin", "Skin ...", Required},
    {"MENU", "MenuAppLanguage", "Language ...", Required},
    {"MENU", "MenuAppClassic", "Quorlin Classic", Required},
    {"MENU", "MenuAppAdvanced", "Quorlin Advanced", Required},
    {"MENU", "MenuAppAbout", "About", Required},

    {"INFO", "InfoWindowTitle", "Information", Required},
    {"INFO", "InfoEndConvert", "File(s) converted", Required},
    {"INFO", "InfoFileAlreadyConverted", "The file is already converted", Pair},
    {"INFO", "InfoFilesAlreadyConverted", "The files are already converted", Pair},
    {"INFO", "InfoPrint", "Printing documents ...", Required},
    {"INFO", "InfoConvert", "Converting documents ...", Required},
    {"INFO", "InfoMerge", "Merging documents ...", Required},

    {"ERROR", "ErrorWindowTitle", "Error", Required},
    {"ERROR", "ErrorPDFLibNotFound",
     "Can't found the PDF library : the program will shut down", Required},
    {"ERROR", "ErrorPDFLibPrint", "Error during print", Required},
    {"ERROR", "ErrorPDFLibConvert", "Error during convertion", Required},
    {"ERROR", "ErrorPDFLibMerge", "Error during merge", Required},
    {"ERROR", "ErrorLanguageNotFound1", "Can't load", Pair},
    {"ERROR", "ErrorLanguageNotFound2", "language : file not found or in use", Pair},
    {"ERROR", "ErrorLanguageInvalid1", "The language file", Pair},
    {"ERROR", "ErrorLanguageInvalid2", "is corrupted", Pair},
    {"ERROR", "ErrorSkinNotFound1", "Can't load", Pair},
    {"ERROR", "ErrorSkinNotFound2", "skin : files not found or in use", Pair},
    {"ERROR", "ErrorSkinInvalid1", "The skin files", Pair},
    {"ERROR", "ErrorSkinInvalid2", "are corrupted", Pair},
    {"ERROR", "ErrorPrintFilename1", "Can't print the file", Pair},
    {"ERROR", "ErrorPrintFilename2", ".", Pair},
    {"ERROR", "ErrorCopyFilename1", "Can't copy the file in", Pair},
    {"ERROR", "ErrorCopyFilename2", ".", Pair},
    {"ERROR", "ErrorProtectedFilename",
     "The file is protected in write, can't overwirte.", Required},
    {"ERROR", "ErrorConvertFile1", "Error during conversion of the file", Pair},
    {"ERROR", "ErrorConvertFile2", ":", Pair},
    {"ERROR", "ErrorMergeFile1", "Error during merge with the file", Pair},
    {"ERROR", "ErrorMergeFile2", ":", Pair},
    {"ERROR", "ErrorInvalidPRNFile1", "The file '", Pair},
    {"ERROR", "ErrorInvalidPRNFile2", "' is not a valid PostScript format.", Pair},
};
// clang-format on

} // namespace

std::span<const ExpectedText> expectedTexts()
{
    return Texts;
}
