// docs/scenarios.md against the tables of the language: what it lists is all there is, and is so.
#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "core/state/frmmain.h"
#include "platform/base/text.h"
#include "tests/scenario/commands.h"
#include "tests/scenario/runner_fixture.h"
#include "tests/scenario/world.h"

namespace scenario {
namespace {

using platform::Narrow;

// Every line of the page below a heading, up to the next one.
std::vector<std::string> Section(const std::string& heading) {
    std::ifstream file(VELDRIN_SCENARIOS_PAGE);
    std::vector<std::string> lines;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            inside = line == heading;
        } else if (inside) {
            lines.push_back(line);
        }
    }
    EXPECT_FALSE(lines.empty()) << heading;
    return lines;
}

std::vector<std::string> CellsOf(const std::string& row) {
    std::vector<std::string> cells;
    std::size_t start = 1;
    for (std::size_t end = row.find('|', start); end != std::string::npos;
         end = row.find('|', start)) {
        const std::string cell = row.substr(start, end - start);
        const std::size_t first = std::min(cell.find_first_not_of(' '), cell.size());
        cells.push_back(cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
        start = end + 1;
    }
    return cells;
}

// The rows of the section's tables, without their heads.
std::vector<std::vector<std::string>> Rows(const std::string& heading) {
    std::vector<std::vector<std::string>> rows;
    for (const std::string& line : Section(heading)) {
        if (line.starts_with("| ---")) {
            rows.pop_back();
        } else if (line.starts_with('|')) {
            rows.push_back(CellsOf(line));
        }
    }
    return rows;
}

// What stands between backticks.
std::vector<std::string> CodeIn(const std::string& text) {
    std::vector<std::string> code;
    std::size_t start = text.find('`');
    while (start != std::string::npos) {
        const std::size_t end = text.find('`', start + 1);
        code.push_back(text.substr(start + 1, end - start - 1));
        start = end == std::string::npos ? end : text.find('`', end + 1);
    }
    return code;
}

std::vector<std::string> CodeIn(const std::vector<std::string>& lines) {
    std::vector<std::string> all;
    for (const std::string& line : lines) {
        const std::vector<std::string> code = CodeIn(line);
        all.insert(all.end(), code.begin(), code.end());
    }
    return all;
}

// The name at the beginning of `List(i)`, `host types "*.mp3"` or `Left`.
std::string FirstName(const std::string& code) {
    return code.substr(0, code.find_first_of(" ("));
}

std::set<std::string> FirstNames(const std::vector<std::string>& code) {
    std::set<std::string> names;
    for (const std::string& one : code) {
        names.insert(FirstName(one));
    }
    return names;
}

struct Signature {
    std::vector<Kind> parameters;
    std::size_t required = 0;
    Kind result = Kind::kNull;
    bool operator==(const Signature&) const = default;
};

// "PATH" is a text, ON? a boolean, Y~ a float, WINDOW an object, any other word an integer.
Kind KindOfWord(const std::string& word) {
    if (word == "WINDOW" || word == "LIST") {
        return Kind::kObject;
    }
    return word.starts_with('"') ? Kind::kText
           : word.ends_with('?') ? Kind::kBoolean
           : word.ends_with('~') ? Kind::kFloat
                                 : Kind::kInteger;
}

Signature SignatureOf(const std::string& code) {
    static const std::map<std::string, Kind> kResults{
        {"boolean", Kind::kBoolean}, {"text", Kind::kText}, {"integer", Kind::kInteger}};
    std::istringstream words(code);
    std::string word;
    words >> word;  // the name
    Signature signature;
    while (words >> word && word != "=") {
        const bool isOptional = word.starts_with('[');
        signature.parameters.push_back(
            KindOfWord(isOptional ? word.substr(1, word.size() - 2) : word));
        signature.required += isOptional ? 0 : 1;
    }
    if (word == "=") {
        words >> word;
        signature.result = kResults.at(word);
    }
    return signature;
}

Signature SignatureOf(const Function& function) {
    return {function.parameters, function.required, function.result};
}

TEST(ScenarioPage, ListsTheRoutinesWithWhatTheyTakeAndGive) {
    std::map<std::string, Signature> told;
    for (const auto& row : Rows("### Routines")) {
        for (const std::string& code : CodeIn(row.at(1))) {
            EXPECT_TRUE(told.emplace(FirstName(code), SignatureOf(code)).second) << code;
        }
    }
    for (const Entry& routine : RoutineNames()) {
        const auto found = told.find(std::string(routine.name));
        ASSERT_NE(found, told.end()) << routine.name;
        EXPECT_EQ(found->second, SignatureOf(*routine.call)) << routine.name;
    }
    EXPECT_EQ(told.size(), RoutineNames().size());
}

TEST(ScenarioPage, ListsTheVariables) {
    std::set<std::string> known;
    for (const Entry& variable : ProgramNames()) {
        known.insert(std::string(variable.name));
    }
    EXPECT_EQ(FirstNames(CodeIn(Section("### Program-wide variables"))), known);
}

TEST(ScenarioPage, ListsTheObjectsWithTheirItemsAndMembers) {
    const std::vector<std::string> code = CodeIn(Section("### Objects and members"));
    const std::set<std::string> names = FirstNames(code);
    for (const ObjectName& object : ObjectNames()) {
        std::string name(object.name);
        if (object.IsArray()) {
            name += '(' + std::to_string(object.first) + ".." + std::to_string(object.last) + ')';
        }
        EXPECT_NE(std::find(code.begin(), code.end(), name), code.end()) << name;
        for (const Class* type = object.type; type != nullptr; type = type->base) {
            for (const Entry& member : type->members) {
                EXPECT_EQ(names.count(std::string(member.name)), 1u) << member.name;
            }
        }
    }
}

TEST(ScenarioPage, ListsWhatMethodsTakeAndGive) {
    std::multimap<std::string, Signature> told;
    for (const std::string& code : CodeIn(Section("### Objects and members"))) {
        if (code.find('(') == std::string::npos) {
            told.emplace(FirstName(code), SignatureOf(code));
        }
    }
    for (const Class* type : ClassesForNew()) {
        for (const Entry& member : type->members) {
            if (!member.call || member.name == "SetColors") {  // of which the page tells the number
                continue;
            }
            const auto [first, last] = told.equal_range(std::string(member.name));
            EXPECT_TRUE(std::any_of(
                first, last,
                [&](const auto& one) { return one.second == SignatureOf(*member.call); }))
                << type->name << '.' << member.name;
        }
    }
}

TEST(ScenarioPage, ListsTheCommands) {
    std::set<std::string> told;
    std::set<std::string> toldOfHost;
    for (const char* heading : {"### Running", "### Host", "### Asking and setting", "### Input",
                                "### Files and settings", "### Surroundings"}) {
        for (const auto& row : Rows(heading)) {
            for (const std::string& code : CodeIn(row.at(0))) {
                told.insert(FirstName(code));
                if (code.starts_with("host ")) {
                    toldOfHost.insert(FirstName(code.substr(5)));
                }
            }
        }
    }
    for (const CommandTable* table : AllCommands()) {
        for (const CommandName& command : *table) {
            EXPECT_EQ(told.count(std::string(command.word)), 1u) << command.word;
        }
    }
    for (const CommandName& command : HostCommands()) {
        EXPECT_EQ(toldOfHost.count(std::string(command.word)), 1u) << "host " << command.word;
    }
}

class ScenarioPageInUse : public RunnerTest {};

TEST_F(ScenarioPageInUse, TellsEachControlByItsNumberAndTooltip) {
    std::multiset<std::string> told;
    std::string asks = "start\n";
    int checks = 0;
    for (const auto& row : Rows("### Controls by number")) {
        for (const std::string& control : CodeIn(row.at(0))) {
            told.insert(control);
            if (control.starts_with("btn") || control.starts_with("tgl")) {
                asks += "? " + control + ".ToolTipText\n= \"" + row.at(2) + "\"\n";
                ++checks;
            }
        }
    }
    std::multiset<std::string> known;
    for (const ObjectName& object : ObjectNames()) {
        for (Long index = object.first; index <= object.last; ++index) {
            known.insert(std::string(object.name) + '(' + std::to_string(index) + ')');
        }
    }
    EXPECT_EQ(told, known);
    EXPECT_GT(checks, 0);
    Holds(asks, checks);
}

using MenuRow = std::vector<std::string>;  // key, item, combination

TEST_F(ScenarioPageInUse, TellsEachKeyOfTheMenu) {
    std::vector<MenuRow> told;
    for (auto row : Rows("### Keys of the menu")) {
        if (row.size() == 3) {
            row[0] = CodeIn(row[0]).at(0);
            told.push_back(row);
        }
    }
    World world(Folder());
    world.Load();
    const sarnel::JPopupMenu& menu = *world.ExistingMain()->hMenu;
    std::vector<MenuRow> known;
    for (Long i = 1; i <= menu.Count(); ++i) {
        const std::string key = Narrow(menu.ItemKey(i));
        const bool isSkin = key.starts_with("kSk");  // as many as are built in
        if (!key.empty() && !isSkin) {
            const std::string note = menu.Header(i)    ? ", a header"
                                     : menu.Enabled(i) ? ""
                                                       : ", never enabled";
            known.push_back({key, Narrow(menu.Caption(i)) + note, Narrow(menu.KeyText(i))});
        }
    }
    EXPECT_EQ(told, known);
}

// The rows of a popup as the page has them, a line each; of the flags just that of headers.
std::map<std::string, std::string> PopupsOfThePage() {
    constexpr std::string_view kHeader = ", a header";
    std::map<std::string, std::string> popups;
    std::string popup;
    for (const auto& row : Rows("### Keys of the menu")) {
        if (row.size() != 4) {
            continue;
        }
        popup = row[0].empty() ? popup : row[0];
        std::string caption = row[2];
        const bool isHeader = caption.ends_with(kHeader);
        caption.resize(caption.size() - (isHeader ? kHeader.size() : 0));
        popups[popup] += caption + '/' + row[3] + '/' + CodeIn(row[1]).at(0) + '/' +
                         (isHeader ? "H" : "") + '\n';
    }
    return popups;
}

TEST_F(ScenarioPageInUse, TellsTheKeysOfTheOtherPopups) {
    const std::map<std::string, std::string> kWays{
        {"a right click on the file browser",
         "call ShowPanel 1 True\npopup cancel\nclick lstFilesAndFolders right\n"},
        {"a right click on the lyrics",
         "call ShowPanel 0 True\npopup cancel\nclick txtLyrics right\n"},
        {"a right click on the icon in the tray",
         "ini HideInSystray \"True\"\nminimise\npopup cancel\ntray rightclick\n"}};
    const std::map<std::string, std::string> told = PopupsOfThePage();
    EXPECT_EQ(told.size(), kWays.size());
    for (const auto& [popup, way] : kWays) {
        ASSERT_EQ(told.count(popup), 1u) << popup;
        std::istringstream out(Run("start\n" + way + "popup last\n", {"--verbose"}).out);
        std::string rows;
        for (std::string line; std::getline(out, line);) {
            if (line.starts_with("    ") && !line.ends_with("/S")) {
                const std::size_t flags = line.rfind('/') + 1;
                rows += line.substr(4, flags - 4) + (line.substr(flags) == "H" ? "H" : "") + '\n';
            }
        }
        EXPECT_EQ(rows, told.at(popup)) << popup;
    }
}

}  // namespace
}  // namespace scenario
