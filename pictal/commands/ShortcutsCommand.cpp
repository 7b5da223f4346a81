#include "PictalCore/Shortcuts/ShortcutConflictDetector.h"
#include "PictalCore/Shortcuts/ShortcutNotation.h"
#include "pictal/InputOutput.h"
#include "pictal/JSONOutput.h"
#include "pictal/Messages.h"
#include "pictal/StoredShortcuts.h"
#include "pictal/commands/Commands.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace pictal::program {

namespace {

struct Options {
    std::optional<std::string> store;
    std::string action;
    /// The action that a combination is checked for.
    std::optional<std::string> currentAction;
    std::string combination;
    bool json = false;
    bool force = false;
};

std::expected<Shortcut, Failure> parsed(const std::string& combination) {
    const auto shortcut = ShortcutNotation::parse(combination);
    if (!shortcut)
        return badInput(
            fmt::format("{}: {}", inQuotes(combination), shortcut.error().description()));
    return *shortcut;
}

std::expected<void, Failure> checkAction(const std::string& action) {
    constexpr auto known = ShortcutStore::supportedActionIDs;
    if (std::ranges::find(known, action) != known.end()) return {};
    return badInput(fmt::format("unknown action {}; the actions are {}", inQuotes(action),
                                fmt::join(known, " ")));
}

std::string messages(const ShortcutConflictReport& report) {
    std::string text = report.shortcut.displayString() + ":";
    for (const ShortcutConflict& conflict : report.conflicts)
        text += " " + conflict.message;
    return text;
}

void warn(const ShortcutConflictReport& report) {
    if (!report.conflicts.empty()) complain("warning: " + messages(report));
}

Outcome list(const Options& options) {
    const auto store = StoredShortcuts::open(options.store);
    if (!store) return std::unexpected(store.error());
    const auto shortcuts = store->load();
    if (!shortcuts) return std::unexpected(shortcuts.error());
    if (options.json) return printJSONOf(*shortcuts);
    std::string table;
    for (const std::string_view action : ShortcutStore::supportedActionIDs) {
        const auto entry = shortcuts->find(action);
        const std::string shown = entry == shortcuts->end() ? "-" : entry->second.displayString();
        table += fmt::format("{:<18} {}\n", action, escaped(shown));
    }
    return doneIf(printText(table));
}

Outcome printAsJSON(const ShortcutConflictReport& report) {
    const auto shortcut = JSONText::of(report.shortcut);
    if (!shortcut) return std::unexpected(shortcut.error());
    std::vector<JSONText> conflicts;
    for (const ShortcutConflict& conflict : report.conflicts) {
        auto text = JSONText::of(conflict);
        if (!text) return std::unexpected(text.error());
        conflicts.push_back(*std::move(text));
    }
    return doneIf(printJSON(JSONText::object({{"shortcut", *shortcut},
                                              {"isUsable", report.isUsable()},
                                              {"conflicts", JSONText::array(conflicts)}})));
}

Outcome printForPeople(const ShortcutConflictReport& report) {
    std::string text = fmt::format("{} is {}\n", report.shortcut.displayString(),
                                   report.isUsable() ? "usable" : "not usable");
    for (const ShortcutConflict& conflict : report.conflicts)
        text += fmt::format("{}: {}\n", rawValue(conflict.severity), escaped(conflict.message));
    return doneIf(printText(text));
}

Outcome check(const Options& options) {
    const auto shortcut = parsed(options.combination);
    if (!shortcut) return std::unexpected(shortcut.error());
    if (options.currentAction)
        if (auto known = checkAction(*options.currentAction); !known)
            return std::unexpected(std::move(known.error()));
    const auto store = StoredShortcuts::open(options.store);
    if (!store) return std::unexpected(store.error());
    const auto shortcuts = store->load();
    if (!shortcuts) return std::unexpected(shortcuts.error());

    const auto report =
        ShortcutConflictDetector::report(*shortcut, *shortcuts, options.currentAction);
    const Outcome outcome = options.json ? printAsJSON(report) : printForPeople(report);
    return outcome && !report.isUsable() ? ExitStatus::no : outcome;
}

Outcome set(const Options& options) {
    if (auto known = checkAction(options.action); !known)
        return std::unexpected(std::move(known.error()));
    const auto shortcut = parsed(options.combination);
    if (!shortcut) return std::unexpected(shortcut.error());
    const auto store = StoredShortcuts::open(options.store);
    if (!store) return std::unexpected(store.error());

    ShortcutConflictReport report;
    auto outcome = store->update([&](ShortcutAssignment& shortcuts) -> Outcome {
        report = ShortcutConflictDetector::report(*shortcut, shortcuts, options.action);
        if (!report.isUsable() && !options.force)
            return std::unexpected(
                Failure{ExitStatus::no, messages(report) + " Choose another, or use --force."});
        shortcuts.insert_or_assign(options.action, *shortcut);
        return ExitStatus::done;
    });
    if (outcome) warn(report);
    return outcome;
}

Outcome unset(const Options& options) {
    if (auto known = checkAction(options.action); !known)
        return std::unexpected(std::move(known.error()));
    const auto store = StoredShortcuts::open(options.store);
    if (!store) return std::unexpected(store.error());

    ShortcutConflictReport report;
    auto outcome = store->update([&](ShortcutAssignment& shortcuts) -> Outcome {
        const auto& defaults = ShortcutStore::defaultShortcuts();
        const auto standard = defaults.find(options.action);
        shortcuts.erase(options.action);
        if (standard == defaults.end()) return ExitStatus::done;
        // Another action may have taken it meanwhile.
        report = ShortcutConflictDetector::report(standard->second, shortcuts, options.action);
        shortcuts.insert(*standard);
        return ExitStatus::done;
    });
    if (outcome) warn(report);
    return outcome;
}

Outcome path(const Options& options) {
    const auto path = StoredShortcuts::path(options.store);
    if (!path) return std::unexpected(path.error());
    return doneIf(printText(path->string() + "\n"));
}

void addStore(CLI::App& command, Options& options) {
    command
        .add_option("--store", options.store,
                    "Where the shortcuts are stored, instead of the user's own place")
        ->type_name("FILE");
}

void addAction(CLI::App& command, Options& options) {
    command
        .add_option("ACTION", options.action,
                    fmt::format("One of {}", fmt::join(ShortcutStore::supportedActionIDs, ", ")))
        ->required();
}

void addCombination(CLI::App& command, Options& options) {
    command
        .add_option("COMBINATION", options.combination,
                    "Modifiers and a key, such as ctrl+cmd+s or ⌃⌘S")
        ->required();
}

}  // namespace

void addShortcuts(Program& program) {
    CLI::App* shortcuts = program.app.add_subcommand(
        "shortcuts", "Show, check and change the global keyboard shortcuts");
    shortcuts->require_subcommand(1);
    shortcuts->footer(
        "Examples:\n"
        "  pictal shortcuts list\n"
        "  pictal shortcuts check shift+cmd+4 || echo taken\n"
        "  pictal shortcuts set region ctrl+opt+r");

    program.add<Options>(
        "list", "Show the shortcut of every action",
        "Examples:\n"
        "  pictal shortcuts list\n"
        "  pictal shortcuts list --json | jq .region",
        [](CLI::App& command, Options& options) {
            command.add_flag("--json", options.json,
                             "As one JSON object, by action; one without a shortcut is left out");
            addStore(command, options);
        },
        list, shortcuts);

    program.add<Options>(
        "check", "Tell whether a combination is free; exit with 1 if it is not",
        "Examples:\n"
        "  pictal shortcuts check ctrl+cmd+s\n"
        "  pictal shortcuts check ⇧⌘4 --action region",
        [](CLI::App& command, Options& options) {
            addCombination(command, options);
            command
                .add_option("--action", options.currentAction,
                            "The action that it is for; its present shortcut is no conflict")
                ->type_name("ACTION");
            command.add_flag("--json", options.json, "As one JSON object");
            addStore(command, options);
        },
        check, shortcuts);

    program.add<Options>(
        "set", "Give an action a shortcut",
        "Examples:\n"
        "  pictal shortcuts set region ctrl+opt+r\n"
        "  pictal shortcuts set window cmd+4 --force",
        [](CLI::App& command, Options& options) {
            addAction(command, options);
            addCombination(command, options);
            command.add_flag("--force", options.force, "Even if it conflicts with something");
            addStore(command, options);
        },
        set, shortcuts);

    program.add<Options>(
        "unset", "Give an action its default shortcut again, or none if it has no default",
        "Examples:\n"
        "  pictal shortcuts unset region",
        [](CLI::App& command, Options& options) {
            addAction(command, options);
            addStore(command, options);
        },
        unset, shortcuts);

    program.add<Options>("path", "Show where the shortcuts are stored",
                         "Examples:\n"
                         "  cp \"$(pictal shortcuts path)\" backup.db",
                         addStore, path, shortcuts);
}

}  // namespace pictal::program
