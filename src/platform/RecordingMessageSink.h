#pragma once
// A message sink for tests: keeps every request and answers from a script (then with the
// default answer). Installs itself for its lifetime and restores the previous sink.
#include <deque>
#include <vector>

#include "platform/MessageSink.h"

class CRecordingMessageSink : public CMessageSink {
 public:
  CRecordingMessageSink() : m_previous(SetMessageSink(this)) {}
  ~CRecordingMessageSink() override { SetMessageSink(m_previous); }
  CRecordingMessageSink(const CRecordingMessageSink&) = delete;
  CRecordingMessageSink& operator=(const CRecordingMessageSink&) = delete;

  int Show(const MessageRequest& request) override {
    m_requests.push_back(request);
    if (m_answers.empty()) return m_defaultAnswer;
    const int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
  }

  void QueueAnswer(int answer) { m_answers.push_back(answer); }
  void SetDefaultAnswer(int answer) { m_defaultAnswer = answer; }
  const std::vector<MessageRequest>& Requests() const { return m_requests; }
  void Clear() { m_requests.clear(); }

 private:
  CMessageSink* m_previous;
  std::vector<MessageRequest> m_requests;
  std::deque<int> m_answers;
  int m_defaultAnswer = IDOK;
};
