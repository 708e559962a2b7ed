#include "platform/MessageSink.h"

#include <cstdio>
#include <string>

#include "platform/StringTable.h"
#include "platform/Utf.h"

namespace {

const char* KindName(MessageKind kind) {
  switch (kind) {
    case MessageKind::Error: return "error";
    case MessageKind::Warning: return "warning";
    case MessageKind::Prompt: return "prompt";
    case MessageKind::Box: break;
  }
  return "message";
}

// Without a user to ask, a question is answered with its safe choice: No for yes/no
// questions, Cancel where there is one, OK otherwise.
int UnattendedAnswer(UINT type) {
  switch (type & 0xFu) {
    case MB_YESNO: return IDNO;
    case MB_OKCANCEL:
    case MB_YESNOCANCEL: return IDCANCEL;
    default: return IDOK;
  }
}

class StderrSink final : public CMessageSink {
 public:
  int Show(const MessageRequest& r) override {
    if (r.id != 0)
      std::fprintf(stderr, "vantrel1 %s %u: %s\n", KindName(r.kind), r.id, vantrel1::ToUtf8(r.text).c_str());
    else
      std::fprintf(stderr, "vantrel1 %s: %s\n", KindName(r.kind), vantrel1::ToUtf8(r.text).c_str());
    return UnattendedAnswer(r.type);
  }
};

StderrSink g_stderrSink;
CMessageSink* g_sink = &g_stderrSink;

}  // namespace

CMessageSink::~CMessageSink() = default;

CMessageSink* SetMessageSink(CMessageSink* sink) {
  CMessageSink* previous = g_sink;
  g_sink = sink ? sink : &g_stderrSink;
  return previous;
}

CMessageSink* GetMessageSink() { return g_sink; }

int AfxMessageBox(LPCWSTR text, UINT type, UINT /*helpId*/) {
  MessageRequest request;
  request.kind = MessageKind::Box;
  request.text = CStdStrW(text);
  request.type = type;
  return g_sink->Show(request);
}

int AfxMessageBox(UINT id, UINT type, UINT /*helpId*/) {
  MessageRequest request;
  request.kind = MessageKind::Box;
  request.id = id;
  request.type = type;
  if (const std::u16string* text = vantrel1::BuiltinStringTable().Find(id)) {
    request.text = *text;
  } else {
    // A missing text is a fault of the build, but the user must still see that something
    // was to be said, and the id tells the developer which string is missing.
    const std::string fallback = "Message " + std::to_string(id) + " (its text is missing)";
    request.text = vantrel1::FromUtf8(fallback);
  }
  return g_sink->Show(request);
}
