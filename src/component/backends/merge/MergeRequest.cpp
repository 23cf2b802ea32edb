#include "component/backends/merge/MergeRequest.h"

#include "component/backends/merge/DocumentJoiner.h"
#include "component/backends/merge/MergeFailure.h"

#include <QFileInfo>
#include <QJsonArray>

#include <new>

namespace Quorlin {

namespace {

constexpr int ReadingShare = 80; ///< percent; the rest is writing

QString titleOf(const QJsonObject &input)
{
    const auto title = input.value(QLatin1String("title")).toString();
    const auto file = input.value(QLatin1String("file")).toString();
    return title.isEmpty() ? QFileInfo(file).completeBaseName() : title;
}

} // namespace

MergeRequest::MergeRequest(const QJsonObject &request, std::function<void(int)> progress)
    : m_request(request), m_progress(std::move(progress))
{
}

MergeOutcome MergeRequest::run()
{
    const auto wrong = refusal();
    if (!wrong.isEmpty())
        return {Reason::EngineFailed, wrong, {}};
    try {
        return merge();
    } catch (const MergeFailure &failure) {
        return failed(failure.reason(), failure.text());
    } catch (const std::bad_alloc &) {
        return failed(Reason::OutOfMemory, reasonText(Reason::OutOfMemory));
    } catch (const std::exception &error) {
        return failed(Reason::Damaged, QString::fromLocal8Bit(error.what()));
    }
}

QString MergeRequest::refusal() const
{
    if (m_request.value(QLatin1String("op")).toString() != QLatin1String("merge"))
        return QStringLiteral("the request is not a merge");
    if (m_request.value(QLatin1String("inputs")).toArray().isEmpty())
        return QStringLiteral("there is nothing to merge");
    if (m_request.value(QLatin1String("output")).toString().isEmpty())
        return QStringLiteral("the request names no output");
    return {};
}

MergeOutcome MergeRequest::merge()
{
    const auto inputs = m_request.value(QLatin1String("inputs")).toArray();
    const bool hasEntries = m_request.value(QLatin1String("bookmarks")).toBool();
    DocumentJoiner joiner;
    for (const auto &value : inputs) {
        const auto input = value.toObject();
        const auto file = input.value(QLatin1String("file")).toString();
        ++m_index;
        m_fileName = input.value(QLatin1String("name")).toString(file);
        joiner.append(file, hasEntries ? std::optional(titleOf(input)) : std::nullopt);
        m_progress(static_cast<int>(ReadingShare * m_index / inputs.size()));
    }
    m_index = 0;
    joiner.write(m_request.value(QLatin1String("output")).toString(), [this](int percent) {
        m_progress(ReadingShare + percent * (100 - ReadingShare) / 100);
    });
    return {Reason::None, {}, {{QStringLiteral("pages"), joiner.pages()}}};
}

MergeOutcome MergeRequest::failed(Reason reason, const QString &text) const
{
    if (m_index == 0)
        return {reason, text, {}};
    return {reason,
            QStringLiteral("%1: %2").arg(m_fileName, text),
            {{QStringLiteral("index"), m_index}}};
}

} // namespace Quorlin
