#pragma once

#include "contract/EventRecorder.h"
#include "convert/ComponentClient.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"

#include <QTemporaryDir>

#include <memory>

namespace Quorlin {

/// A folder of small documents and the three objects, connected to the component under test.
class Scene
{
public:
    /// @param program full path of the component.
    explicit Scene(const QString &program);
    explicit Scene(const ComponentSettings &settings);

    /// Writes a document and returns its path; what is inside follows from the extension.
    [[nodiscard]] QString document(const char *name) const;

    /// The path of a document that is not there.
    [[nodiscard]] QString absent(const char *name) const;

    [[nodiscard]] QString write(const char *name, const QByteArray &bytes) const;
    [[nodiscard]] QString options() const { return m_options; }

    void print(const QStringList &files);
    void distil(const QStringList &files);
    void merge(const QStringList &files);

    /// The names of what is in the folder beside the documents that were written.
    [[nodiscard]] QStringList leftovers() const;

    /// Ends the objects and their component.
    void end();

    std::unique_ptr<ComponentClient> client;
    std::unique_ptr<PDFLib> lib;
    std::unique_ptr<PDFDistiller> distiller;
    std::unique_ptr<PDFMerger> merger;
    std::unique_ptr<EventRecorder> printing;
    std::unique_ptr<EventRecorder> distilling;
    std::unique_ptr<EventRecorder> merging;

private:
    QTemporaryDir m_folder;
    mutable QStringList m_written;
    QString m_options;
};

/// Settings for a component at this path, everything else as usual.
[[nodiscard]] ComponentSettings settingsFor(const QString &program);

[[nodiscard]] QByteArray contentOf(const QString &path);

/// The program that QUORLIN_CONTRACT_COMPONENT names, else the fake.
[[nodiscard]] QString component();

/// For the end of a job, in milliseconds: the real component starts an office engine first.
constexpr int JobPatience = 90'000;

} // namespace Quorlin

/// Waits until a recorder has seen so many completions.
#define TRY_COMPLETED(recorder, count)                                                             \
    QTRY_COMPARE_WITH_TIMEOUT((recorder)->completions(), count, Quorlin::JobPatience)
