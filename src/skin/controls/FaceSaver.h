#pragma once

#include "skin/controls/LabelFace.h"

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// Keeps a bitmap file equal to a label's picture.
///
/// Saving is asked for at every paint; it writes only when the picture differs from the one
/// saved last or when the file does not hold it any more. A new file takes the old one's place
/// in one step. Failures are ignored: the next paint tries again.
class FaceSaver
{
public:
    /// @param file where to; empty means nowhere.
    /// @param scale pixels of the picture for one device-independent pixel.
    void save(const LabelFace &face, const QString &file, qreal scale);

private:
    [[nodiscard]] bool isSaved(const LabelFace &face, const QString &file, qreal scale) const;

    LabelFace m_face;
    QString m_file;
    qreal m_scale = 0;
    QByteArray m_written;
};

} // namespace Quorlin
