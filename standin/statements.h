// Carrying out the statements of a script, one after another. A modal window that a statement opens takes the
// statements that follow as its events, until it closes.
#pragma once

#include <string>
#include <vector>

#include "platform/automation.h"
#include "standin/plugin_session.h"
#include "standin/script.h"

namespace standin {

inline constexpr int kNoTargetResult = 9;
inline constexpr int kUsageStatus = 64;

class StatementRunner {
 public:
  StatementRunner(PluginSession* session, StatementSource* source) : session_(*session), source_(*source) {}

  // Runs statements to the end of the input; the exit status.
  int RunAll();
  // Runs the next one. False when there is none, after "exit" or after an error in the language.
  bool RunNext();

 private:
  bool RunLine();

  using Tokens = std::vector<Token>;
  struct Statement {
    const char* name;
    // A letter an argument: t a text, n a number, w a word or a text; in upper case one that may be left out.
    const char* arguments;
    void (StatementRunner::*run)(const Tokens& arguments);
  };
  static const Statement kStatements[];

  // False, and *problem, when the tokens are no statement of the language.
  bool Execute(const Tokens& tokens, std::string* problem);
  bool ExecuteAssignment(const Tokens& tokens, std::string* problem);
  bool ExecuteCommand(const PLUGIN_COMMAND& command, const Tokens& arguments, std::string* problem);

  void Run(const Tokens& arguments);
  void Tree(const Tokens& arguments);
  void Geometry(const Tokens& arguments);
  void Skew(const Tokens& arguments);
  void Activate(const Tokens& arguments);
  void Key(const Tokens& arguments);
  void Answer(const Tokens& arguments);
  void Set(const Tokens& arguments);
  void Click(const Tokens& arguments);
  void Get(const Tokens& arguments);
  void Show(const Tokens& arguments);
  void Picture(const Tokens& arguments);
  void Exit(const Tokens& arguments);

  // The last result that is not 0 becomes the exit status.
  void TakeResult(int result);
  // Counts what became of an action; `what` says in the diagnostic what it was meant for.
  bool Succeeded(platform::automation::Outcome outcome, const std::string& what);
  // The plug-in's tree is filled by its first run, which the real host makes when it has a drive.
  void MakeSureItRan();

  PluginSession& session_;
  StatementSource& source_;
  std::string problem_;  // what was wrong with the arguments of the statement that ran last
  int depth_ = 0;        // statements that have opened a window which is still open
  int status_ = 0;
  bool ended_ = false;
};

}  // namespace standin
