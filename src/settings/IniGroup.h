#pragma once

#include "settings/IniVar.h"

#include <QList>
#include <QString>

#include <memory>

namespace Quorlin {

/// One group of an INI file: its variables in the order in which they were read or added, equal
/// names included.
struct IniGroup
{
    QString Name;
    QList<std::shared_ptr<IniVar>> Vars;

    /// The first variable of this name, counting case; nullptr when there is none.
    [[nodiscard]] IniVar *find(const QString &varName) const;
};

} // namespace Quorlin
