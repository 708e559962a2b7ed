#include "suite/AppMessages.h"

#include <string>

#include "platform/MessageSink.h"
#include "suite/VantrelStrings.h"

namespace {

constexpr int kMaxMessageLength = 1024;

// The id keeps a missing text traceable; the user still learns what it was about.
CStdStrW MissingText(UINT id) {
  const std::string digits = std::to_string(id);
  return CStdStrW(u"Poruka ") + CStdStrW(std::u16string(digits.begin(), digits.end()));
}

int Show(MessageKind kind, UINT id, CStdStrArg<WCHAR> argument, UINT type) {
  MessageRequest request;
  request.kind = kind;
  request.id = id;
  request.text = AppMessageText(id, argument);
  request.type = type;
  return GetMessageSink()->Show(request);
}

}  // namespace

CStdStrW AppMessageText(UINT id, CStdStrArg<WCHAR> argument) {
  CStdStrW text = LoadVantrelString(id, kMaxMessageLength);
  if (text.empty()) text = MissingText(id);
  const CStdStrW value(argument.View());
  // Replace copies the argument as it is, so a "%s" inside it stays text.
  if (text.Replace(u"%s", value) == 0 && !value.empty()) text += u"\n" + value;
  return text;
}

int AppError(UINT id, HWND /*owner*/, CStdStrArg<WCHAR> argument, UINT type) {
  return Show(MessageKind::Error, id, argument, type);
}

int AppWarning(UINT id, HWND /*owner*/, CStdStrArg<WCHAR> argument, UINT type) {
  return Show(MessageKind::Warning, id, argument, type);
}

int AppPrompt(UINT id, HWND /*owner*/, CStdStrArg<WCHAR> argument, UINT type) {
  return Show(MessageKind::Prompt, id, argument, type);
}
