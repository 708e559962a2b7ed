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
  void OnNotify(std::function<void()> action) { m_onNotify = std::move(action); }

 private:
  std::string m_name;
  std::vector<Call>& m_log;
  std::function<void()> m_onNotify;
};

std::vector<std::string> Names(const std::vector<Call>& log) {
  std::vector<std::string> names;
  for (const Call& call : log) names.push_back(call.observer);
  return names;
}

class SubjectWithThree : public ::testing::Test {
 protected:
  void SetUp() override {
    subject.Attach(&a);
    subject.Attach(&b);
    subject.Attach(&c);
  }
  std::vector<Call> log;
  LoggingObserver a{"a", log}, b{"b", log}, c{"c", log};
  CSubject subject;
};

}  // namespace

TEST(Subject, AttachCountsEachObserverOnceAndIgnoresNull) {
  std::vector<Call> log;
  LoggingObserver a("a", log), b("b", log);
  CSubject subject;
  EXPECT_EQ(subject.Attach(&a), 1);
  EXPECT_EQ(subject.Attach(&a), 1);
  EXPECT_EQ(subject.Attach(nullptr), 1);
  EXPECT_EQ(subject.Attach(&b), 2);
  EXPECT_EQ(subject.IsAttached(&a), 1);
  EXPECT_EQ(subject.IsAttached(nullptr), 0);
}

TEST(Subject, DetachReportsWhatIsLeft) {
  std::vector<Call> log;
  LoggingObserver a("a", log), b("b", log);
  CSubject subject;
  EXPECT_EQ(subject.Detach(&a), 0);
  subject.Attach(&a);
  EXPECT_EQ(subject.Detach(&b), 1);
  EXPECT_EQ(subject.Detach(&a), 0);
  EXPECT_EQ(subject.IsAttached(&a), 0);
}

TEST(Subject, NotifyingNobodySucceeds) {
  CSubject subject;
  EXPECT_EQ(subject.NotifyAll(5), 1);
}

TEST(Observer, BaseClassIgnoresTheNotification) {
  CObserver observer;
  CSubject subject;
  subject.Attach(&observer);
  EXPECT_EQ(observer.Notify(1, &subject), 1);
  EXPECT_EQ(subject.NotifyAll(1), 1);
}

TEST_F(SubjectWithThree, NotifiesInAttachmentOrderWithCodeAndSubject) {
  EXPECT_EQ(subject.NotifyAll(42), 1);
  EXPECT_EQ(log, (std::vector<Call>{{"a", 42, &subject}, {"b", 42, &subject}, {"c", 42, &subject}}));
}

TEST_F(SubjectWithThree, ReattachedObserverMovesToTheEnd) {
  subject.Detach(&a);
  subject.Attach(&a);
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"b", "c", "a"}));
  subject.DetachAll();
  EXPECT_EQ(subject.Attach(&b), 1);
}

TEST_F(SubjectWithThree, ObserverDetachingItselfLetsTheOthersBeNotified) {
  b.OnNotify([this] { subject.Detach(&b); });
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(subject.IsAttached(&b), 0);
}

TEST_F(SubjectWithThree, ObserverDetachingTheNextOneSkipsIt) {
  a.OnNotify([this] { subject.Detach(&b); });
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a", "c"}));
}

TEST_F(SubjectWithThree, ObserverDetachingAnEarlierOneDoesNotRepeatItself) {
  b.OnNotify([this] { subject.Detach(&a); });
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(SubjectWithThree, DetachAllDuringANotificationEndsIt) {
  a.OnNotify([this] { subject.DetachAll(); });
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a"}));
}

TEST_F(SubjectWithThree, ObserverAttachedByTheLastOneWaitsForTheNextNotification) {
  LoggingObserver late("late", log);
  c.OnNotify([&] { subject.Attach(&late); });
  subject.NotifyAll(1);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a", "b", "c"}));
  log.clear();
  c.OnNotify(nullptr);
  subject.NotifyAll(2);
  EXPECT_EQ(Names(log), (std::vector<std::string>{"a", "b", "c", "late"}));
}
