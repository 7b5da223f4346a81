#include "PictalCore/Platform/Text/detail/Scripts.h"

#include <algorithm>
#include <string_view>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

namespace pictal::detail {

namespace {

bool isScript(UScriptCode script) {
    return script != USCRIPT_COMMON && script != USCRIPT_INHERITED && script != USCRIPT_UNKNOWN;
}

/// Of the first scalar that has one.
UScriptCode ownScript(std::u16string_view character) {
    for (std::size_t i = 0; i < character.size();) {
        UErrorCode status = U_ZERO_ERROR;
        const UScriptCode script =
            uscript_getScript(static_cast<UChar32>(nextScalar(character, i)), &status);
        if (U_SUCCESS(status) && isScript(script)) return script;
    }
    return USCRIPT_COMMON;
}

/// The brackets that are open, with the script around each. Those outermost are forgotten when
/// there are too many.
class OpenBrackets {
  public:
    void open(UChar32 closing, UScriptCode script) {
        if (open_.size() == deepest) open_.erase(open_.begin());
        open_.push_back({closing, script});
    }
    /// @return the script around the bracket's partner, or `otherwise` when nobody knows
    UScriptCode close(UChar32 closing, UScriptCode otherwise) {
        for (std::size_t i = open_.size(); i-- > 0;)
            if (open_[i].closing == closing) {
                const UScriptCode script = open_[i].script;
                open_.resize(i);
                return isScript(script) ? script : otherwise;
            }
        return otherwise;
    }

  private:
    static constexpr std::size_t deepest = 64;
    struct Bracket {
        UChar32 closing;
        UScriptCode script;
    };
    std::vector<Bracket> open_;
};

std::uint32_t tag(UScriptCode script) {
    const std::string_view name = uscript_getShortName(script);
    std::uint32_t result = 0;
    for (const char letter : name.substr(0, 4))
        result = result << 8 | static_cast<unsigned char>(letter);
    return result;
}

}  // namespace

std::vector<std::uint32_t> scriptsOf(const GraphemeText& text) {
    std::vector<std::uint32_t> scripts;
    scripts.reserve(text.size());
    OpenBrackets brackets;
    UScriptCode current = USCRIPT_COMMON;
    std::size_t undecided = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t position = 0;
        const auto scalar = static_cast<UChar32>(nextScalar(text[i], position));
        const UScriptCode own = ownScript(text[i]);
        if (isScript(own)) {
            if (!isScript(current)) undecided = i;
            current = own;
        } else if (const auto type = u_getIntPropertyValue(scalar, UCHAR_BIDI_PAIRED_BRACKET_TYPE);
                   type == U_BPT_OPEN) {
            brackets.open(u_getBidiPairedBracket(scalar), current);
        } else if (type == U_BPT_CLOSE) {
            current = brackets.close(scalar, current);
        }
        scripts.push_back(tag(current));
    }
    // What stands before the first letter goes with it.
    const auto front = scripts.begin() + static_cast<std::ptrdiff_t>(undecided);
    if (front != scripts.end()) std::fill(scripts.begin(), front, *front);
    return scripts;
}

}  // namespace pictal::detail
