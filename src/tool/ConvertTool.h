#pragma once

#include "convert/ComponentClient.h"
#include "convert/ConversionSettings.h"
#include "tool/ConvertJob.h"
#include "tool/Delivery.h"
#include "tool/ListReader.h"
#include "tool/Narrator.h"
#include "tool/Options.h"
#include "tool/Report.h"

#include <QObject>

#include <memory>
#include <optional>

namespace Quorlin {

class Console;

/// One run of the tool: reads the lists of names, gathers the documents, has them converted,
/// delivers the results and tells what came of it.
class ConvertTool : public QObject
{
    Q_OBJECT

public:
    enum ExitCode { Done = 0, SomeFailed = 1, WrongUse = 2, InterruptedBase = 128 };

    /// @param options that convert and fit together. @param console must outlive the tool.
    /// @param programFolder where Quorlin.ini and the folder Settings lie.
    ConvertTool(const Options &options, Console &console, const QString &programFolder,
                const ComponentSettings &component, QObject *parent = nullptr);
    ~ConvertTool() override;

    /// Returns when lists are still to be read, or after the documents are gathered; the rest
    /// happens in the event loop.
    void start();

    /// Ends the run: what is not finished counts as cancelled.
    /// @param number of the signal that asked for it.
    void interrupt(int number);

Q_SIGNALS:
    /// The run is over, told exactly once and perhaps within start(). @param exitCode of the
    /// program.
    void finished(int exitCode);

private:
    void begin();
    [[nodiscard]] QString wrongUse() const;
    void gather();
    void giveUp(int exitCode, const QString &text);
    /// What no document would get past; the folder of results is made.
    [[nodiscard]] Delivery::Outcome obstacleToAll() const;
    void giveUpAll(const Delivery::Outcome &obstacle);
    void forecast();
    void convert();
    void deliver();
    void deliverMerged();
    void deliverEach();
    void deliverOne(DocumentRecord &document);
    void failAll(const Delivery::Outcome &outcome);
    void conclude();
    void end(int exitCode);

    Options m_options;
    QString m_programFolder;
    std::optional<ConversionSettings> m_settings;
    Narrator m_narrator;
    ListReader m_lists;
    Report m_report;
    std::optional<Delivery> m_delivery;
    ComponentClient m_client;
    std::unique_ptr<ConvertJob> m_job;
    bool m_over = false;
};

} // namespace Quorlin
