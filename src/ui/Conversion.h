#pragma once

#include "convert/ComponentClient.h"
#include "convert/ConversionSettings.h"
#include "convert/JobDriver.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"
#include "convert/ResultDelivery.h"
#include "winsupport/clsKelCopyFile.h"

namespace Quorlin {

/// Everything that a window needs to convert: the component's three objects, the driver of a job
/// and the delivery of results.
class Conversion
{
public:
    /// All must outlive the object.
    struct Surroundings
    {
        JobWindow &window;
        MessageService &messages;
        const TextSource &texts;
        ResultDelivery::Open openResult;
        const ReasonTexts &reasons;
    };

    /// Whether there is a component to make objects of.
    [[nodiscard]] static bool canBeMade(const ComponentSettings &component);

    /// @param settings printer and job options; must outlive the object.
    Conversion(const ComponentSettings &component, const ConversionSettings &settings,
               const Surroundings &surroundings);

    /// Starts the component, so that the first job need not wait for it.
    void warm() { m_client.warm(); }
    /// Starts a job with the documents of the window.
    void LblConvert_Click() { m_driver.LblConvert_Click(); }
    /// Results of a job are still on their way, though the window may be idle already.
    [[nodiscard]] bool isDelivering() const { return m_driver.isDelivering(); }

private:
    ComponentClient m_client;
    PDFLib m_lib;
    PDFDistiller m_distiller;
    PDFMerger m_merger;
    clsKelCopyFile pCopyFile;
    ResultDelivery m_delivery;
    JobDriver m_driver;
};

} // namespace Quorlin
