#include "settings/IniGroup.h"

#include <algorithm>

namespace Quorlin {

IniVar *IniGroup::find(const QString &varName) const
{
    const auto found =
        std::ranges::find_if(Vars, [&varName](const auto &var) { return var->Name == varName; });
    return found == Vars.end() ? nullptr : found->get();
}

} // namespace Quorlin
