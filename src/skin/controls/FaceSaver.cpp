#include "skin/controls/FaceSaver.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QTemporaryFile>

#include <filesystem>

namespace Quorlin {

namespace {

QImage pictureOf(const LabelFace &face, qreal scale)
{
    QImage picture((QSizeF(face.size) * scale).toSize(), QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    picture.setDevicePixelRatio(scale);
    picture.fill(face.backColor);
    QPainter painter(&picture);
    face.draw(painter);
    return picture;
}

/// Renames over an existing file; a folder of that name stays.
bool replace(QTemporaryFile &made, const QString &file)
{
    std::error_code error;
    std::filesystem::rename(made.fileName().toStdU16String(), file.toStdU16String(), error);
    made.setAutoRemove(bool(error));
    return !error;
}

QByteArray bitmapOf(const LabelFace &face, qreal scale)
{
    QBuffer bitmap;
    if (!bitmap.open(QIODevice::WriteOnly) || !pictureOf(face, scale).save(&bitmap, "BMP"))
        return {};
    return bitmap.data();
}

bool write(const QByteArray &bytes, const QString &file)
{
    QTemporaryFile made(file + QStringLiteral(".XXXXXX"));
    return made.open() && made.write(bytes) == bytes.size() && made.flush() && replace(made, file);
}

/// Asks about the size first: it may be anything by now, a pipe that nobody writes included.
bool holds(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() != bytes.size())
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}

} // namespace

void FaceSaver::save(const LabelFace &face, const QString &file, qreal scale)
{
    if (file.isEmpty() || isSaved(face, file, scale) || !QFileInfo(file).dir().exists())
        return;
    const auto bytes = bitmapOf(face, scale);
    if (bytes.isEmpty() || !write(bytes, file))
        return;
    m_face = face;
    m_file = file;
    m_scale = scale;
    m_written = bytes;
}

bool FaceSaver::isSaved(const LabelFace &face, const QString &file, qreal scale) const
{
    return !m_written.isEmpty() && file == m_file && scale == m_scale && face == m_face &&
           holds(file, m_written);
}

} // namespace Quorlin
