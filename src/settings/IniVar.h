#pragma once

#include <QString>

namespace Quorlin {

/// One variable of an INI file.
struct IniVar
{
    QString Name;
    QString Value;
};

} // namespace Quorlin
