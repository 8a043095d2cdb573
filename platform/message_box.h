// Message boxes.
#pragma once

#include <string>

namespace platform {

enum class MessageStyle { kOk, kYesNo };

// Answers, in the platform's codes.
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

// Shows the text and waits for the answer.
int ShowMessageBox(const std::string& text, MessageStyle style);

}  // namespace platform
