#include "PictalCore/Support/DemoModeConfiguration.h"

#include "PictalCore/Support/detail/NormalizedName.h"

#include <algorithm>
#include <initializer_list>

namespace pictal {

namespace {

using Environment = DemoModeConfiguration::Environment;
using Names = std::initializer_list<std::string_view>;
using Arguments = std::span<const std::string>;

constexpr std::array languages{
    detail::Alias{"en", "en"},
    detail::Alias{"en", "english"},
    detail::Alias{"en", "en-us"},
    detail::Alias{"zh-Hans", "zh"},
    detail::Alias{"zh-Hans", "zh-hans"},
    detail::Alias{"zh-Hans", "zh-cn"},
    detail::Alias{"zh-Hans", "chinese"},
    detail::Alias{"zh-Hans", "simplifiedchinese"},
    detail::Alias{"zh-Hans", "simplified-chinese"},
    detail::Alias{"ja", "ja"},
    detail::Alias{"ja", "jp"},
    detail::Alias{"ja", "japanese"},
    detail::Alias{"es", "es"},
    detail::Alias{"es", "spanish"},
    detail::Alias{"ko", "ko"},
    detail::Alias{"ko", "kr"},
    detail::Alias{"ko", "korean"},
};

std::optional<std::string> languageIdentifier(std::string_view text) {
    const std::string name = detail::normalizedName(text);
    for (const auto& alias : languages)
        if (alias.name == name) return alias.value;
    return std::nullopt;
}

bool isTruthy(std::string_view value) {
    const std::string word = Unicode::lowercased(Unicode::trimmingWhiteSpace(value));
    return word == "1" || word == "true" || word == "yes" || word == "on" || word == "enabled";
}

/// One variable that says so or one argument is enough; a variable that says no forbids nothing.
bool isSwitchedOn(const Environment& environment, Names variables, Arguments arguments,
                  Names flags) {
    for (const std::string_view name : variables)
        if (const auto variable = environment.find(name);
            variable != environment.end() && isTruthy(variable->second))
            return true;
    return std::ranges::find_first_of(arguments, flags) != arguments.end();
}

/// "--flag=VALUE", or "--flag" and the next argument, whatever that is.
std::optional<std::string_view> argumentValue(Arguments arguments, std::string_view flag) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (!argument.starts_with(flag)) continue;
        const std::string_view rest = argument.substr(flag.size());
        if (rest.starts_with('=')) return rest.substr(1);
        if (rest.empty() && i + 1 < arguments.size()) return arguments[i + 1];
    }
    return std::nullopt;
}

/// What the first source that is there says.
std::optional<std::string_view> setting(const Environment& environment, Names variables,
                                        Arguments arguments, Names flags) {
    for (const std::string_view name : variables)
        if (const auto variable = environment.find(name); variable != environment.end())
            return variable->second;
    for (const std::string_view flag : flags)
        if (const auto value = argumentValue(arguments, flag)) return value;
    return std::nullopt;
}

}  // namespace

DemoModeConfiguration DemoModeConfiguration::load(const Environment& environment,
                                                  std::span<const std::string> arguments,
                                                  bool allowDemoMode) {
    DemoModeConfiguration configuration;
    if (!allowDemoMode ||
        !isSwitchedOn(environment, {"VISTRELL_DEMO_MODE", "PICTAL_DEMO_MODE"}, arguments,
                      {"--vistrell-demo-mode", "--pictal-demo-mode", "--demo-mode"}))
        return configuration;
    configuration.isEnabled = true;

    if (const auto name =
            setting(environment, {"VISTRELL_DEMO_SCENARIO", "PICTAL_DEMO_SCENARIO"}, arguments,
                    {"--vistrell-demo-scenario", "--pictal-demo-scenario", "--demo-scenario"}))
        configuration.scenario = scenarioFromNormalizedRawValue(*name).value_or(defaultScenario);

    if (const auto name =
            setting(environment, {"VISTRELL_DEMO_LANGUAGE", "PICTAL_DEMO_LANGUAGE"}, arguments,
                    {"--vistrell-demo-language", "--pictal-demo-language", "--demo-language"}))
        configuration.languageIdentifier = pictal::languageIdentifier(*name);

    if (const auto path = setting(environment, {"VISTRELL_DEMO_BACKGROUND_PATH"}, arguments,
                                  {"--vistrell-demo-background"}))
        if (const std::string_view trimmed = Unicode::trimmingWhiteSpace(*path); !trimmed.empty())
            configuration.backgroundImagePath = trimmed;
    return configuration;
}

}  // namespace pictal
