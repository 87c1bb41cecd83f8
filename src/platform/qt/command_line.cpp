#include "platform/qt/command_line.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QRegularExpression>
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
  if (verb == "acknowledge") {
    profile.verb = ProfileCommand::Verb::kAcknowledge;
    return expect(1, "acknowledge");
  }
  return "expected list, get, set or acknowledge after \"profile\"" +
         (verb.isEmpty() ? std::string() : ", not \"" + verb.toStdString() + "\"");
}

/// `arguments` with the words of "profile set KEY VALUE" moved to the end, after "--", when VALUE begins with a minus
/// sign and would be taken for an option. It may stand anywhere among the `options`, of which those `with_value` take
/// the next argument.
QStringList ValueLast(const QStringList& arguments, const QStringList& options, const QStringList& with_value) {
  constexpr qsizetype kBeforeValue = 3;  // "profile", "set" and the key
  QStringList words;
  QStringList others{arguments.value(0)};
  for (qsizetype i = 1; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == "--") return arguments;  // the user took care of it
    const QString name = argument.section('=', 0, 0).remove(QRegularExpression("^--?"));
    const bool option = argument.startsWith('-') && options.contains(name);
    const bool value = words.size() == kBeforeValue && words.startsWith("profile") && words[1] == "set";
    if (option) {
      others << argument;
      if (with_value.contains(name) && !argument.contains('=') && i + 1 < arguments.size()) others << arguments[++i];
    } else if (argument.startsWith('-') && !value) {
      others << argument;  // unknown: reported by the parser
    } else {
      words << argument;
    }
  }
  if (words.size() <= kBeforeValue || !words[kBeforeValue].startsWith('-')) return arguments;
  return others + QStringList{"--"} + words;
}

}  // namespace

std::variant<CommandLine, CommandLineError> ParseCommandLine(const std::vector<std::string>& arguments,
                                                             bool has_windows) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  CommandLine line;
  const QCommandLineOption help(QStringList{"h", "help"});
  const QCommandLineOption version(QStringList{"v", "version"});
  const QCommandLineOption headless("headless");
  const QCommandLineOption automation("automation");
  const QCommandLineOption json("json");
  const QCommandLineOption demo("demo");
  const QCommandLineOption port("port", {}, "PATH");
  const QCommandLineOption profile("profile", {}, "DIR");
  const QCommandLineOption picture("picture", {}, "FILE");
  const QCommandLineOption language("language", {}, "NAME");
  const QCommandLineOption subkey("subkey", {}, "NAME");
  QCommandLineParser parser;
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  const QList<QCommandLineOption> options{help, version, automation, headless, json,  demo,
                                          port, profile, picture,    language, subkey};
  parser.addOptions(options);
  QStringList names;
  QStringList with_value;
  for (const QCommandLineOption& option : options) {
    names << option.names();
    if (!option.valueName().isEmpty()) with_value << option.names();
  }
  if (!parser.parse(ValueLast(list, names, with_value))) return CommandLineError{parser.errorText().toStdString()};

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
  line.language = ValueOf(parser, language);
  line.profile.subkey = ValueOf(parser, subkey);

  QStringList words = parser.positionalArguments();
  if (!words.isEmpty()) {
    if (words.takeFirst() != "profile") {
      return CommandLineError{"unknown command \"" + parser.positionalArguments().first().toStdString() + "\""};
    }
    line.action = CommandLine::Action::kProfile;
    if (std::string wrong = ReadProfileCommand(words, line.profile); !wrong.empty()) return CommandLineError{wrong};
    if (line.automation || line.headless || line.json || line.demo || line.port || line.picture || line.language) {
      return CommandLineError{"\"profile\" takes --profile and --subkey only"};
    }
    return line;
  }
  if (line.profile.subkey) return CommandLineError{"--subkey needs the command \"profile\""};
  if (line.json && !line.headless && has_windows) return CommandLineError{"--json needs --headless"};
  if (line.automation && (line.headless || line.picture)) {
    return CommandLineError{
        "--automation is how the program is started for a client; it cannot be combined with "
        "--headless or --picture"};
  }
  if (!has_windows) line.headless = true;
  if (line.picture && line.headless) return CommandLineError{"--picture needs a window"};
  if (line.language && line.headless) return CommandLineError{"--language needs a window"};
  if (line.demo && line.port) return CommandLineError{"--demo uses no serial port; --port cannot be combined with it"};
  if (line.port && line.port->empty()) return CommandLineError{"--port needs the path of a device"};
  if (line.profile_folder && line.profile_folder->empty()) return CommandLineError{"--profile needs a folder"};
  return line;
}

std::string Usage(bool has_windows, const ServiceUsage& service) {
  const std::string program = has_windows ? "orvalis" : "orvalisd";
  std::string usage = "usage: " + program;
  if (has_windows) {
    usage +=
        " [--port PORT | --demo] [--profile DIR] [--language NAME] [--picture FILE]\n       " + program + " --headless";
  }
  usage += " [--json] [--port PORT | --demo] [--profile DIR]\n";
  for (const std::string& synopsis : service.synopsis) {
    usage += "       ";
    usage += program;
    usage += ' ';
    usage += synopsis;
    usage += '\n';
  }
  usage += "       " + program + " profile list|get KEY|set KEY VALUE|acknowledge [--subkey NAME] [--profile DIR]\n";
  usage += "       " + program + " --version | --help\n\n" + service.options;
  if (has_windows) {
    usage +=
        "  --headless      no window: one line per cycle on standard output; connects and reconnects automatically\n";
  }
  usage += R"(  --json          the same as JSON objects, one per line
  --port PORT     use this serial port, as the setup lists them, for this run; connects at start and reconnects when the
                  connection is lost
  --demo          demo mode, for this run: simulated values, no serial port
  --profile DIR   use the settings in DIR (also: ORVALIS_PROFILE_DIR)
)";
  if (has_windows) {
    usage += "  --language NAME the language of the windows, such as de or en; otherwise that of the locale\n";
    usage += "  --picture FILE  write a picture of the panel to FILE after the first reading, then exit\n";
  }
  usage +=
      R"(  profile         show or change the settings; the value "-" is read from standard input; "acknowledge" confirms
                  that settings were lost
)";
  return usage;
}

}  // namespace orvalis
