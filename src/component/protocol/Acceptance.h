#pragma once

#include "component/protocol/Reason.h"

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The document families, in the order of the component's five lists of extensions.
enum class Family { All = 0, Word = 1, Excel = 2, PowerPoint = 3, Pdf = 4 };

/// How a document enters the printing step.
enum class Entrance {
    Office,     ///< opened by the office engine: documents and pictures
    Pdf,        ///< printed directly
    PostScript, ///< taken as it is
    None,       ///< not taken
};

/// Which files the component takes, judged by extension and by a look at the file.
namespace Acceptance {

/// The extensions of a family in lower case, without the point. Family::All holds every
/// extension, those of pictures, drawings and PostScript included.
[[nodiscard]] const QStringList &extensions(Family family);

/// The way in for a file of this name, without regard to the case of its extension.
[[nodiscard]] Entrance entranceOf(const QString &fileName);

/// Why the component does not take this file; Reason::None when it does. Never blocks on a
/// device or a pipe: the kind of file is looked at before it is opened.
[[nodiscard]] Reason refusalOf(const QString &filePath);

} // namespace Acceptance

} // namespace Quorlin
