#include "standin/statements.h"

#include <cstring>
#include <utility>

#include "platform/format.h"
#include "standin/host.h"
#include "standin/output.h"

namespace standin {

using platform::Format;
using platform::automation::AnswerKind;
using platform::automation::Outcome;
namespace automation = platform::automation;

const StatementRunner::Statement StatementRunner::kStatements[] = {
    {"run", "", &StatementRunner::Run},
    {"tree", "", &StatementRunner::Tree},
    {"geometry", "", &StatementRunner::Geometry},
    {"skew", "nn", &StatementRunner::Skew},
    {"activate", "t", &StatementRunner::Activate},
    {"key", "wN", &StatementRunner::Key},
    {"answer", "w", &StatementRunner::Answer},
    {"set", "nt", &StatementRunner::Set},
    {"click", "n", &StatementRunner::Click},
    {"get", "n", &StatementRunner::Get},
    {"show", "", &StatementRunner::Show},
    {"picture", "t", &StatementRunner::Picture},
    {"exit", "n", &StatementRunner::Exit},
};

namespace {

bool Fits(char kind, const Token& token) {
  switch (platform::LowerAscii(kind)) {
    case 't':
      return token.kind == Token::Kind::kText;
    case 'n':
      return token.kind == Token::Kind::kNumber;
    default:
      return token.kind == Token::Kind::kWord || token.kind == Token::Kind::kText;
  }
}

bool ArgumentsFit(const char* kinds, const std::vector<Token>& arguments) {
  std::size_t needed = 0;
  while (kinds[needed] >= 'a') ++needed;
  if (arguments.size() < needed || arguments.size() > std::strlen(kinds)) return false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!Fits(kinds[i], arguments[i])) return false;
  }
  return true;
}

constexpr char kRegisterPrefix[] = "::R";
constexpr int kRegisters = 14;

}  // namespace

int StatementRunner::RunAll() {
  while (RunNext()) {
  }
  return status_;
}

bool StatementRunner::RunNext() {
  // Windows that open windows without end would use up the stack.
  constexpr int kDeepest = 100;
  if (ended_) return false;
  if (depth_ == kDeepest) {
    Complain(Format("%s: more than %d windows are open", source_.Place().c_str(), kDeepest));
    ended_ = true;
    status_ = kUsageStatus;
    return false;
  }
  ++depth_;
  const bool more = RunLine();
  --depth_;
  return more;
}

bool StatementRunner::RunLine() {
  std::string line;
  std::string problem;
  Tokens tokens;
  if (!source_.Next(&line, &problem)) {
    ended_ = true;
    if (problem.empty()) return false;
  } else if (Tokenize(line, &tokens, &problem) && (tokens.empty() || Execute(tokens, &problem))) {
    return !ended_;
  }
  Complain(Format("%s: %s", source_.Place().c_str(), problem.c_str()));
  ended_ = true;
  status_ = kUsageStatus;
  return false;
}

bool StatementRunner::Execute(const Tokens& tokens, std::string* problem) {
  const Token& first = tokens[0];
  if (first.kind != Token::Kind::kWord) {
    *problem = "a statement begins with a name";
    return false;
  }
  if (first.text.compare(0, 2, "::") == 0) return ExecuteAssignment(tokens, problem);
  const Tokens arguments(tokens.begin() + 1, tokens.end());
  if (const PLUGIN_COMMAND* command = session_.FindCommand(first.text)) {
    return ExecuteCommand(*command, arguments, problem);
  }
  for (const Statement& statement : kStatements) {
    if (first.text != statement.name) continue;
    if (!ArgumentsFit(statement.arguments, arguments)) {
      *problem = Format("\"%s\" has other arguments", statement.name);
      return false;
    }
    (this->*statement.run)(arguments);
    *problem = std::exchange(problem_, "");
    return problem->empty();
  }
  *problem = Format("there is no statement \"%s\"", first.text.c_str());
  return false;
}

bool StatementRunner::ExecuteAssignment(const Tokens& tokens, std::string* problem) {
  for (int i = 0; i < kRegisters; ++i) {
    if (tokens[0].text != Format("%s%d", kRegisterPrefix, i)) continue;
    if (tokens.size() != 3 || tokens[1].kind != Token::Kind::kEquals || tokens[2].kind != Token::Kind::kNumber) break;
    Host::Instance().SetRegister(i, tokens[2].number);
    return true;
  }
  *problem = "an assignment reads ::R0 = NUMBER, with registers from ::R0 to ::R13";
  return false;
}

bool StatementRunner::ExecuteCommand(const PLUGIN_COMMAND& command, const Tokens& arguments, std::string* problem) {
  if (arguments.size() != PluginSession::ArgumentCount(command)) {
    *problem = Format("\"%s\" takes %zu arguments", command.name, PluginSession::ArgumentCount(command));
    return false;
  }
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i].kind == Token::Kind::kText) {
      Host::Instance().SetArgument(i + 1, arguments[i].text);
    } else if (arguments[i].kind == Token::Kind::kNumber) {
      Host::Instance().SetArgument(i + 1, arguments[i].number);
    } else {
      *problem = Format("an argument of \"%s\" is neither a text nor a number", command.name);
      return false;
    }
  }
  TakeResult(command.handler(Host::Instance().vm()));
  return true;
}

void StatementRunner::TakeResult(int result) {
  if (result != 0 && !ended_) status_ = result;
}

bool StatementRunner::Succeeded(Outcome outcome, const std::string& what) {
  switch (outcome) {
    case Outcome::kDone:
      return true;
    case Outcome::kNoTarget:
      Complain(Format("%s: there is nothing to take %s", source_.Place().c_str(), what.c_str()));
      break;
    case Outcome::kRefused:
      Complain(Format("%s: the control is disabled or takes no %s", source_.Place().c_str(), what.c_str()));
      break;
  }
  TakeResult(kNoTargetResult);
  return false;
}

void StatementRunner::MakeSureItRan() {
  std::string text;
  if (automation::TreeText(&text) == Outcome::kDone && text.empty()) session_.Run();
}

void StatementRunner::Run(const Tokens&) {
  if (!session_.Run()) TakeResult(kNoTargetResult);
}

void StatementRunner::Tree(const Tokens&) {
  MakeSureItRan();
  std::string text;
  if (Succeeded(automation::TreeText(&text), "tree")) Print(text);
}

void StatementRunner::Geometry(const Tokens&) {
  const DriveGeometry& geometry = Host::Instance().identified_geometry;
  for (std::uint32_t i = 0; i < geometry.rows.size(); ++i) {
    const ZoneRow& row = geometry.rows[i];
    Print(Format("%u %u %u %u %u\n", i / geometry.zones, i % geometry.zones, row.first_cylinder, row.last_cylinder,
                 static_cast<unsigned>(row.sectors)));
  }
}

void StatementRunner::Skew(const Tokens& arguments) {
  const DriveGeometry& geometry = Host::Instance().identified_geometry;
  const std::int32_t cylinder = arguments[0].number;
  const std::int32_t head = arguments[1].number;
  if (geometry.SectorsPerTrack(head, cylinder) == 0) {
    Succeeded(Outcome::kNoTarget, "skew: the drive has no such track");
    return;
  }
  Print(Format("%u\n", geometry.Skew(head, cylinder)));
}

void StatementRunner::Activate(const Tokens& arguments) {
  MakeSureItRan();
  Succeeded(automation::ActivateItem(arguments[0].text), Format("activate \"%s\"", arguments[0].text.c_str()));
}

void StatementRunner::Key(const Tokens& arguments) {
  platform::KeyPress key;
  if (!platform::ParseKey(arguments[0].text, &key)) {
    problem_ = Format("there is no key \"%s\"", arguments[0].text.c_str());
    return;
  }
  constexpr std::int32_t kMostPresses = 1'000'000;
  const std::int32_t count = arguments.size() > 1 ? arguments[1].number : 1;
  if (count < 1 || count > kMostPresses) {
    problem_ = Format("a key is pressed 1 to %d times", kMostPresses);
    return;
  }
  for (std::int32_t i = 0; i < count && !ended_; ++i) {
    if (!Succeeded(automation::SendKey(key), "key")) return;
  }
}

void StatementRunner::Answer(const Tokens& arguments) {
  const Token& token = arguments[0];
  AnswerKind kind = AnswerKind::kText;
  if (token.kind == Token::Kind::kWord) {
    if (token.text == "yes") {
      kind = AnswerKind::kYes;
    } else if (token.text == "no") {
      kind = AnswerKind::kNo;
    } else if (token.text == "cancel") {
      kind = AnswerKind::kCancel;
    } else {
      problem_ = "an answer is a text, yes, no or cancel";
      return;
    }
  }
  automation::QueueAnswer(kind, token.text);
}

void StatementRunner::Set(const Tokens& arguments) {
  Succeeded(automation::SetControl(arguments[0].number, arguments[1].text), Format("text for %d", arguments[0].number));
}

void StatementRunner::Click(const Tokens& arguments) {
  Succeeded(automation::ClickControl(arguments[0].number), Format("click on %d", arguments[0].number));
}

void StatementRunner::Get(const Tokens& arguments) {
  std::string text;
  const Outcome outcome = automation::GetControl(arguments[0].number, &text);
  if (Succeeded(outcome, Format("get %d", arguments[0].number))) Print(text + "\n");
}

void StatementRunner::Show(const Tokens&) {
  std::string text;
  if (Succeeded(automation::Show(&text), "show")) Print(text);
}

void StatementRunner::Picture(const Tokens& arguments) {
  Succeeded(automation::SavePicture(arguments[0].text), "picture");
}

void StatementRunner::Exit(const Tokens& arguments) {
  if (arguments[0].number < 0 || arguments[0].number > 255) {
    problem_ = "an exit status is a number from 0 to 255";
    return;
  }
  ended_ = true;
  status_ = arguments[0].number;
}

}  // namespace standin
