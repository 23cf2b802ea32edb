#pragma once

#include "component/protocol/Acceptance.h"
#include "convert/ComponentObject.h"
#include "convert/Refusal.h"

#include <QStringList>

namespace Quorlin {

/// Prints documents to PostScript, and tells which files the component takes.
class PDFLib : public ComponentObject
{
    Q_OBJECT
    Q_PROPERTY(QString PrinterName READ PrinterName WRITE setPrinterName)

public:
    /// @param client is not owned and must outlive the object.
    explicit PDFLib(ComponentClient &client, QObject *parent = nullptr);

    /// The printer through which office documents are printed; "Varnex PDF" by default.
    [[nodiscard]] QString PrinterName() const { return m_printerName; }
    void setPrinterName(const QString &name) { m_printerName = name; }

    /// Whether the component takes the file. @param filePath full path. Looks at the name and
    /// at the file's beginning; needs no component process.
    [[nodiscard]] bool acceptsFile(const QString &filePath);

    /// Why the component does not take a file; code 0 when it does. May be asked from any thread.
    [[nodiscard]] static Refusal refusalOf(const QString &filePath);

    /// Why the last file was refused; code 0 as long as none was.
    [[nodiscard]] Refusal lastRefusal() const { return m_lastRefusal; }

    /// One of the five lists: extensions in lower case, without the point.
    [[nodiscard]] static QStringList extensions(Family family);

Q_SIGNALS:
    /// One document has been handled. @param Index its position from 1. @param Filename the
    /// PostScript file; it does not exist when the document could not be printed.
    void OnOutputFilename(qint32 &Index, QString &Filename);

protected:
    [[nodiscard]] QJsonObject requestMembers() const override;
    void outputKnown(qint32 index, const QString &filename) override;

private:
    QString m_printerName;
    Refusal m_lastRefusal;
};

} // namespace Quorlin
