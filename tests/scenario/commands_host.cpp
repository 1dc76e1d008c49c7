// Scripting the host: what stands behind the word `host`.
#include "tests/scenario/commands.h"

namespace scenario {

namespace {

// A command that changes one of the host's answers.
template <class T>
Command Answer(T HostAnswers::*answer, T value) {
    return [answer, value](World& world) { world.Host().answers.*answer = value; };
}

Command Path(CommandLine& line) {
    return Answer(&HostAnswers::path, line.Text());
}

Command Types(CommandLine& line) {
    return Answer(&HostAnswers::types, line.Text());
}

Command Title(CommandLine& line) {
    const std::u16string path = line.Text();
    return [path, title = line.Text()](World& world) { world.Host().answers.titles[path] = title; };
}

Command Info(CommandLine& line) {
    const std::u16string path = line.Text();
    return [path, info = line.Text()](World& world) { world.Host().answers.infos[path] = info; };
}

Command Open(CommandLine& line) {
    const std::u16string path = line.Text();
    return [path, opens = line.Boolean()](World& world) {
        if (opens) {
            world.Host().answers.dead.erase(path);
        } else {
            world.Host().answers.dead.insert(path);
        }
    };
}

Command Length(CommandLine& line) {
    return Answer(&HostAnswers::length, line.Integer());
}

Command Position(CommandLine& line) {
    return Answer(&HostAnswers::position, line.Integer());
}

Command Playing(CommandLine& line) {
    return Answer(&HostAnswers::playing, line.Boolean());
}

Command Time(CommandLine& line) {
    const std::u16string played = line.Text();
    return [played, remaining = line.Text()](World& world) {
        world.Host().answers.played = played;
        world.Host().answers.remaining = remaining;
    };
}

Command LengthText(CommandLine& line) {
    return Answer(&HostAnswers::lengthText, line.Text());
}

Command Stream(CommandLine& line) {
    const Long rate = line.Integer();
    const Long channels = line.Integer();
    return [rate, channels, bitRate = line.Text()](World& world) {
        HostAnswers& answers = world.Host().answers;
        answers.sampleRate = rate;
        answers.channels = channels;
        answers.bitRate = bitRate;
    };
}

Command Cells(CommandLine& line) {
    return [classes = line.Texts()](World& world) { world.Host().Cells(classes); };
}

Command Silent(CommandLine& line) {
    return Answer(&HostAnswers::silent, line.Boolean());
}

Command Throws(CommandLine& line) {
    if (line.SkipWord("none")) {
        return [](World& world) {
            world.Host().answers.throws.clear();
            world.Host().answers.failing.clear();
        };
    }
    for (const HostMember member :
         {HostMember::kCapacity, HostMember::kCellItem, HostMember::kGetClass}) {
        if (line.SkipWord(NameOf(member))) {
            return [member](World& world) { world.Host().answers.failing.insert(member); };
        }
    }
    return
        [impulse = line.Integer()](World& world) { world.Host().answers.throws.insert(impulse); };
}

// Any kind of value is an answer, whether the impulse asks for that kind or not.
Command ForcedAnswer(CommandLine& line) {
    const Long impulse = line.Integer();
    if (line.SkipWord("none")) {
        return [impulse](World& world) { world.Host().answers.forced.erase(impulse); };
    }
    const Operand value = line.Value();
    CheckCarried(value);
    return [impulse, value](World& world) {
        world.Host().answers.forced[impulse] =
            ToImpulse(value.Evaluate(world), world.Host().AnyObject());
    };
}

Command On(CommandLine& line) {
    const Long impulse = line.Integer();
    return [impulse, command = line.Inner()](World& world) {
        world.Host().On(impulse, [&world, command] { command(world); });
    };
}

}  // namespace

const CommandTable& HostCommands() {
    static const CommandTable table{
        {"path", Path},           {"types", Types},
        {"title", Title},         {"info", Info},
        {"open", Open},           {"length", Length},
        {"position", Position},   {"playing", Playing},
        {"time", Time},           {"lengthtext", LengthText},
        {"stream", Stream},       {"cells", Cells},
        {"silent", Silent},       {"throws", Throws},
        {"answer", ForcedAnswer}, {"on", On},
    };
    return table;
}

}  // namespace scenario
