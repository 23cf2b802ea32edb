#pragma once

#include "component/supervisor/Component.h"
#include "support/Reports.h"
#include "support/TestFolder.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace Quorlin {

/// A component whose workers are stand-ins, with folders of its own for everything.
///
/// What the stand-ins do follows from the documents; see StandInDocuments.
class ComponentScene
{
public:
    ComponentScene();
    ~ComponentScene();
    ComponentScene(const ComponentScene &) = delete;
    ComponentScene &operator=(const ComponentScene &) = delete;

    /// Writes a document and returns its path.
    QString document(const char *name, const QByteArray &text = "text") const;
    [[nodiscard]] QString path(const char *name) const { return documents.path(name); }
    /// Job options that suit every PostScript.
    [[nodiscard]] QString options() const;

    // Ask for a step; @return the job's number.
    int askToPrint(const QStringList &files);
    int askToDistil(const QStringList &files, const QString &options = {});
    int askToMerge(const QStringList &files, bool bookmarks = false);

    // The same, and wait for the end. @return the outputs; none when the end did not come.
    QStringList print(const QStringList &files);
    QStringList distil(const QStringList &files, const QString &options = {});
    QStringList merge(const QStringList &files, bool bookmarks = false);

    void send(const QJsonObject &request);
    void send(const QByteArray &bytes);
    [[nodiscard]] bool waitFor(const char *type, int job);
    [[nodiscard]] bool succeeded(int job) const;
    /// Whether the last job did.
    [[nodiscard]] bool succeeded() const { return succeeded(m_lastJob); }

    /// What the workers were asked: requests of one kind ("export", "print", "merge"), in order.
    [[nodiscard]] QList<QJsonObject> requests(const char *op) const;
    /// Lets a worker's program be missing from now on.
    void removeProgram(const char *name) const;
    /// The component's working folder.
    [[nodiscard]] QString workFolder() const;

    /// Ends the component; everything temporary has to be gone then.
    void end();
    [[nodiscard]] QStringList leftovers() const;

    TestFolder documents, programs, home, temporary, journals;
    Reports reports;
    std::unique_ptr<Component> component;
    int stallSeconds = 60;
    QJsonValue atOnce{QJsonValue::Undefined}; ///< the wish how many are worked on at once

private:
    QStringList outputsOf(int job);
    [[nodiscard]] int ask(const char *step, QJsonObject request, const QList<QJsonObject> &entries);

    QByteArray m_homeBefore, m_temporaryBefore, m_pathBefore;
    int m_lastJob = 0;
};

} // namespace Quorlin
