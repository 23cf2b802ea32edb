#pragma once

namespace Quorlin {

/// The texts that users see, by the names that language files give them and in the order in
/// which those are read.
enum class TextKey {
    AppWindowTitle,

    TextBtnConvert,
    TextLblCompress,
    TextOptMail,
    TextOptShow,
    TextOptLink,
    TextInfoInProgress,

    AboutTitle,
    AboutCopyright,
    AboutAdobeTitle,
    AboutAdobeInformations,
    AboutAdobeTrademarks,

    DialogOpenTitle,
    DialogSaveTitle,
    DialogAllValidExtension,
    DialogWordExtension,
    DialogExcelExtension,
    DialogPowerpointExtension,
    DialogPDFExtension,

    MenuLstOpen,
    MenuLstAdd,
    MenuLstRemove,
    MenuLstClear,
    MenuLstMove,
    MenuLstFirst,
    MenuLstPrevious,
    MenuLstNext,
    MenuLstLast,
    MenuAppSkin,
    MenuAppLanguage,
    MenuAppClassic,
    MenuAppAdvanced,
    MenuAppAbout,

    InfoWindowTitle,
    InfoEndConvert,
    InfoFileAlreadyConverted,
    InfoFilesAlreadyConverted,
    InfoPrint,
    InfoConvert,
    InfoMerge,

    ErrorWindowTitle,
    ErrorPDFLibNotFound,
    ErrorPDFLibPrint,
    ErrorPDFLibConvert,
    ErrorPDFLibMerge,
    ErrorLanguageNotFound1,
    ErrorLanguageNotFound2,
    ErrorLanguageInvalid1,
    ErrorLanguageInvalid2,
    ErrorSkinNotFound1,
    ErrorSkinNotFound2,
    ErrorSkinInvalid1,
    ErrorSkinInvalid2,
    ErrorPrintFilename1,
    ErrorPrintFilename2,
    ErrorCopyFilename1,
    ErrorCopyFilename2,
    ErrorProtectedFilename,
    ErrorConvertFile1,
    ErrorConvertFile2,
    ErrorMergeFile1,
    ErrorMergeFile2,
    ErrorInvalidPRNFile1,
    ErrorInvalidPRNFile2,
};

} // namespace Quorlin
