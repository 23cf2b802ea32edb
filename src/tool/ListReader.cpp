#include "tool/ListReader.h"

#include "tool/FileNames.h"

#include <utility>

namespace Quorlin {

ListReader::ListReader(const QStringList &lists, NameList::Separator separator, QObject *parent)
    : QObject(parent), m_lists(lists), m_separator(separator)
{
}

void ListReader::start()
{
    QMetaObject::invokeMethod(this, &ListReader::readNext, Qt::QueuedConnection);
}

void ListReader::readNext()
{
    if (++m_current == m_lists.size()) {
        Q_EMIT finished(m_found);
        return;
    }
    m_names = std::make_unique<NameList>(m_separator);
    m_input = new ListInput(m_lists.at(m_current), this);
    connect(m_input, &ListInput::arrived, this, &ListReader::onArrived);
    connect(m_input, &ListInput::ended, this, &ListReader::onEnded);
    if (m_input->isTerminal())
        Q_EMIT waitsForTyping();
}

void ListReader::onArrived(const QByteArray &bytes)
{
    if (!m_names->add(bytes))
        fail(m_names->error());
}

void ListReader::onEnded(const QString &error)
{
    if (!error.isEmpty())
        fail(QStringLiteral("it cannot be read: %1").arg(error));
    else if (!m_names->end())
        fail(m_names->error());
    else if (m_found.size() + m_names->names().size() > NameList::MostNames)
        fail(QStringLiteral("with it there are more than %1 names").arg(NameList::MostNames));
    else {
        m_found.append(m_names->names());
        std::exchange(m_input, nullptr)->deleteLater();
        readNext();
    }
}

void ListReader::fail(const QString &why)
{
    auto *const input = std::exchange(m_input, nullptr);
    input->disconnect(this);
    input->deleteLater();
    Q_EMIT failed(QStringLiteral("the list %1: %2").arg(listName(), why));
}

QString ListReader::listName() const
{
    const auto &list = m_lists.at(m_current);
    return list == QLatin1String("-") ? QStringLiteral("on standard input")
                                      : FileNames::legible(list);
}

} // namespace Quorlin
