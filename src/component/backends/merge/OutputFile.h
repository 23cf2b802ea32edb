#pragma once

#include <QFile>
#include <QString>

#include <qpdf/Pipeline.hh>

namespace Quorlin {

/// A file that appears under its name only when it is whole.
///
/// It is written under another name in the same folder, which is removed again when commit()
/// was not reached.
class OutputFile : public Pipeline
{
public:
    /// Throws MergeFailure when the folder may not be written.
    explicit OutputFile(const QString &path);
    ~OutputFile() override;

    /// Throws MergeFailure when the disk is full or writing fails otherwise.
    void write(const unsigned char *data, size_t length) override;
    void finish() override {}

    /// Gives the file its name, in the place of an older one. Throws MergeFailure.
    void commit();

private:
    [[noreturn]] void fail(qint64 needed) const;
    void flush();

    QString m_path;
    QFile m_file;
    QByteArray m_buffer;
};

} // namespace Quorlin
