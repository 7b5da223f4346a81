#include "PictalCore/Shortcuts/ShortcutModifiers.h"

#include <array>
#include <utility>

namespace pictal {

std::vector<std::string> ShortcutModifiers::displaySymbols() const {
    static constexpr std::array symbols{std::pair{control, "⌃"}, std::pair{option, "⌥"},
                                        std::pair{shift, "⇧"}, std::pair{command, "⌘"}};
    std::vector<std::string> result;
    for (const auto& [modifier, symbol] : symbols)
        if (contains(modifier)) result.emplace_back(symbol);
    return result;
}

}  // namespace pictal
