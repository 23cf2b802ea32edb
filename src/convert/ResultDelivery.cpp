#include "convert/ResultDelivery.h"

#include "convert/ReasonTexts.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <utility>

namespace Quorlin {

namespace {

bool isSameFile(const QString &one, const QString &other)
{
    const auto real = QFileInfo(one).canonicalFilePath();
    return !real.isEmpty() && real == QFileInfo(other).canonicalFilePath();
}

/// A file that nobody may write is protected: it stays.
bool deleteFile(const QString &path)
{
    constexpr auto Write = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return (QFile::permissions(path) & Write) && QFile::remove(path);
}

} // namespace

ResultDelivery::ResultDelivery(Copy copy, Open open, MessageService &messages,
                               const TextSource &texts, const ReasonTexts *reasons)
    : m_copy(std::move(copy)), m_open(std::move(open)), m_messages(messages), m_texts(texts),
      m_reasons(reasons)
{
}

bool ResultDelivery::fileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

QString ResultDelivery::finalName(const QString &converterInput)
{
    const auto point = converterInput.lastIndexOf(QLatin1Char('.'));
    const auto name = converterInput.lastIndexOf(QLatin1Char('/')) + 1;
    return point < name ? converterInput : converterInput.left(point) + QStringLiteral(".pdf");
}

ResultDelivery::Outcome ResultDelivery::deliver(const QString &temporary, const QString &finalName,
                                                bool showsResult)
{
    // What the copy says does not count: an old file that could not be replaced is the result.
    static_cast<void>(m_copy(temporary, finalName));
    Outcome outcome{fileExists(finalName), false};
    if (!outcome.delivered)
        m_messages.showWithDetail(copyMessage(finalName), MessageStyle::Critical,
                                  m_texts.text(QStringLiteral("ErrorWindowTitle")),
                                  whyNotCopied(temporary, finalName));
    else if (showsResult)
        m_open(finalName);
    if (!isSameFile(temporary, finalName))
        outcome.temporaryRemoved = deleteFile(temporary);
    return outcome;
}

/// What shows after the copy; None when nothing does.
Reason ResultDelivery::obstacleOf(const QString &temporary, const QString &finalName)
{
    const QFileInfo folder(QFileInfo(finalName).absolutePath());
    if (QFileInfo(finalName).isDir() || !folder.isDir() || !folder.isWritable())
        return Reason::NotAllowed;
    const QStorageInfo disk(folder.filePath());
    if (disk.isReadOnly())
        return Reason::NotAllowed;
    return disk.isValid() && disk.bytesAvailable() < QFileInfo(temporary).size() ? Reason::NoRoom
                                                                                 : Reason::None;
}

QString ResultDelivery::whyNotCopied(const QString &temporary, const QString &finalName) const
{
    const auto reason = obstacleOf(temporary, finalName);
    if (reason == Reason::None)
        return {};
    static const ReasonTexts english;
    return (m_reasons ? *m_reasons : english).sentence(reason);
}

QString ResultDelivery::copyMessage(const QString &finalName) const
{
    return m_texts.text(QStringLiteral("ErrorCopyFilename1")) + QLatin1Char(' ') + finalName +
           m_texts.text(QStringLiteral("ErrorCopyFilename2"));
}

} // namespace Quorlin
