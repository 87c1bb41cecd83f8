#include "platform/qt/command_line.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

namespace orvalis {
namespace {

std::optional<std::string> ValueOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
  if (!parser.isSet(option)) return std::nullopt;
  return parser.value(option).toStdString();
}

/// Fills `profile` from "list", "get KEY" or "set KEY VALUE"; returns what is wrong, or "".
std::string ReadProfileCommand(const QStringList& words, ProfileCommand& profile) {
  const QString verb = words.value(0);
  const auto expect = [&](qsizetype count, const char* form) -> std::string {
    return words.size() == count ? "" : std::string("expected: orvalis profile ") + form;
  };
  if (verb == "list") {
    profile.verb = ProfileCommand::Verb::kList;
    return expect(1, "list");
  }
  if (verb == "get") {
    profile.verb = ProfileCommand::Verb::kGet;
    profile.key = words.value(1).toStdString();
    return expect(2, "get KEY");
  }
  if (verb == "set") {
    profile.verb = ProfileCommand::Verb::kSet;
    profile.key = words.value(1).toStdString();
    profile.value = words.value(2).toStdString();
    return expect(3, "set KEY VALUE");
  }
  return "expected list, get or set after \"profile\"" +
         (verb.isEmpty() ? std::string() : ", not \"" + verb.toStdString() + "\"");
}

}  // namespace

std::variant<CommandLine, CommandLineError> ParseCommandLine(const std::vector<std::string>& arguments) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  CommandLine line;
  // A value may begin with a minus sign, so the words of "profile set" are taken before options are looked for.
  if (list.size() > 4 && list[1] == "profile" && list[2] == "set" && list[4].startsWith('-')) list.insert(3, "--");

  const QCommandLineOption help(QStringList{"h", "help"});
  const QCommandLineOption version(QStringList{"v", "version"});
  const QCommandLineOption headless("headless");
  const QCommandLineOption automation("automation");
  const QCommandLineOption json("json");
  const QCommandLineOption demo("demo");
  const QCommandLineOption port("port", {}, "PATH");
  const QCommandLineOption profile("profile", {}, "DIR");
  const QCommandLineOption picture("picture", {}, "FILE");
  const QCommandLineOption subkey("subkey", {}, "NAME");
  QCommandLineParser parser;
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  parser.addOptions({help, version, automation, headless, json, demo, port, profile, picture, subkey});
  if (!parser.parse(list)) return CommandLineError{parser.errorText().toStdString()};

  if (parser.isSet(help)) {
    line.action = CommandLine::Action::kHelp;
    return line;
  }
  if (parser.isSet(version)) {
    line.action = CommandLine::Action::kVersion;
    return line;
  }
  line.automation = parser.isSet(automation);
  line.headless = parser.isSet(headless);
  line.json = parser.isSet(json);
  line.demo = parser.isSet(demo);
  line.port = ValueOf(parser, port);
  line.profile_folder = ValueOf(parser, profile);
  line.picture = ValueOf(parser, picture);
  line.profile.subkey = ValueOf(parser, subkey);

  QStringList words = parser.positionalArguments();
  if (!words.isEmpty()) {
    if (words.takeFirst() != "profile") {
      return CommandLineError{"there is no command \"" + parser.positionalArguments().first().toStdString() + "\""};
    }
    line.action = CommandLine::Action::kProfile;
    if (std::string wrong = ReadProfileCommand(words, line.profile); !wrong.empty()) return CommandLineError{wrong};
    if (line.automation || line.headless || line.json || line.demo || line.port || line.picture) {
      return CommandLineError{"\"profile\" takes --profile and --subkey only"};
    }
    return line;
  }
  if (line.profile.subkey) return CommandLineError{"--subkey goes with \"profile\""};
  if (line.json && !line.headless) return CommandLineError{"--json goes with --headless"};
  if (line.automation && (line.headless || line.picture)) {
    return CommandLineError{"--automation is how the program is started for a client; leave out the other"};
  }
  if (line.picture && line.headless) return CommandLineError{"there is no picture without a window"};
  if (line.demo && line.port) return CommandLineError{"--demo uses no serial port; leave out --port"};
  if (line.port && line.port->empty()) return CommandLineError{"--port needs the path of a device"};
  if (line.profile_folder && line.profile_folder->empty()) return CommandLineError{"--profile needs a folder"};
  return line;
}

std::string Usage(const ServiceUsage& service) {
  return R"(usage: orvalis [--port PORT | --demo] [--profile DIR] [--picture FILE]
)" + service.synopsis +
         R"(       orvalis --headless [--json] [--port PORT | --demo] [--profile DIR]
       orvalis profile list|get KEY|set KEY VALUE [--subkey NAME] [--profile DIR]
       orvalis --version | --help

)" + service.options +
         R"(  --headless      no window: a line a working cycle on standard output; connects and reconnects by itself
  --json          the same as JSON objects, one a line
  --port PORT     this serial port, as the setup lists them, for this run, connected at start and again when it is lost
  --demo          demo mode, for this run: made-up values, no serial line
  --profile DIR   the settings in DIR (also: ORVALIS_PROFILE_DIR)
  --picture FILE  write a picture of the panel to FILE after the first values, and end
  profile         show or change the settings; the value "-" is read from standard input
)";
}

}  // namespace orvalis
