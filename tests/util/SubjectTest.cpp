#include "util/Subject.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

struct Call {
  std::string observer;
  unsigned int code;
  const CSubject* subject;
  bool operator==(const Call&) const = default;
};

// Records each notification in a log shared by all observers of a test, and can act on
// the subject from inside Notify.
class LoggingObserver : public CObserver {
 public:
  LoggingObserver(std::string name, std::vector<Call>& log) : m_name(std::move(name)), m_log(log) {}
  int Notify(unsigned int code, const CSubject* subject) override {
    m_log.push_back({m_name, code, subject});
    if (m_onNotify) m_onNotify();
    return 0;
  }
  std::function<void()> m_onNotify;

 private:
  std::string m_name;
  std::vector<Call>& m_log;
};

class SubjectWithThree : public ::testing::Test {
 protected:
  void SetUp() override {
    subject.Attach(&a);
    subject.Attach(&b);
    subject.Attach(&c);
  }
  std::vector<std::string> Notified(unsigned int code) {
    log.clear();
    EXPECT_EQ(subject.NotifyAll(code), 1);
    std::vector<std::string> names;
    for (const Call& call : log) names.push_back(call.observer);
    return names;
  }

  std::vector<Call> log;
  LoggingObserver a{"a", log}, b{"b", log}, c{"c", log};
  CSubject subject;
};

using Names = std::vector<std::string>;

}  // namespace

TEST(Subject, AttachAndDetachKeepEachObserverOnceAndReportTheCount) {
  std::vector<Call> log;
  LoggingObserver a("a", log), b("b", log);
  CSubject subject;
  EXPECT_EQ(subject.NotifyAll(5), 1);  // nobody to tell
  EXPECT_EQ(subject.Detach(&a), 0);
  EXPECT_EQ(subject.Attach(&a), 1);
  EXPECT_EQ(subject.Attach(&a), 1);
  EXPECT_EQ(subject.Attach(nullptr), 1);
  EXPECT_EQ(subject.IsAttached(nullptr), 0);
  EXPECT_EQ(subject.Attach(&b), 2);
  EXPECT_EQ(subject.IsAttached(&a), 1);
  EXPECT_EQ(subject.Detach(&a), 1);
  EXPECT_EQ(subject.Detach(&a), 1);
  EXPECT_EQ(subject.IsAttached(&a), 0);
}

TEST_F(SubjectWithThree, NotifiesInAttachmentOrderAndAReattachedObserverLast) {
  subject.NotifyAll(42);
  EXPECT_EQ(log, (std::vector<Call>{{"a", 42, &subject}, {"b", 42, &subject}, {"c", 42, &subject}}));
  subject.Detach(&a);
  subject.Attach(&a);
  EXPECT_EQ(Notified(1), (Names{"b", "c", "a"}));
  subject.DetachAll();
  EXPECT_EQ(subject.Attach(&b), 1);
}

// The walk takes the next position before each call: a detached observer is not called
// again and does not make anyone be skipped or called twice.
TEST_F(SubjectWithThree, ChangesDuringANotificationTakeEffectAtOnce) {
  LoggingObserver late("late", log);
  const struct {
    const char* what;
    LoggingObserver* actor;
    std::function<void()> action;
    Names notified;
  } cases[] = {
      {"b detaches itself", &b, [this] { subject.Detach(&b); }, {"a", "b", "c"}},
      {"a detaches the next one", &a, [this] { subject.Detach(&b); }, {"a", "c"}},
      {"b detaches an earlier one", &b, [this] { subject.Detach(&a); }, {"a", "b", "c"}},
      {"a detaches all", &a, [this] { subject.DetachAll(); }, {"a"}},
      {"the last attaches another", &c, [&] { subject.Attach(&late); }, {"a", "b", "c"}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    subject.DetachAll();
    SetUp();
    row.actor->m_onNotify = row.action;
    EXPECT_EQ(Notified(1), row.notified);
    row.actor->m_onNotify = nullptr;
  }
  EXPECT_EQ(subject.IsAttached(&late), 1);  // reached by the next notification only
  EXPECT_EQ(Notified(2), (Names{"a", "b", "c", "late"}));
}
