#pragma once
// A GUI application for the dialog tests and a way to drive a modal dialog: the test's
// action runs on the dialog once it is up, and a guard closes whatever is still open
// after a few seconds, so that no test ever waits for a person.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace vantrel1::test {

inline std::unique_ptr<QApplication>& ApplicationSlot() {
  static std::unique_ptr<QApplication> application;
  return application;
}

// Qt cannot take the application down among the static destructors: it goes after the
// last test.
class ApplicationEnvironment : public ::testing::Environment {
 public:
  void TearDown() override { ApplicationSlot().reset(); }
};

inline QApplication* Application() {
  if (!QCoreApplication::instance()) {
    static int argc = 1;
    static char name[] = "test_dialogs";
    static char* argv[] = {name, nullptr};
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);
    ApplicationSlot() = std::make_unique<QApplication>(argc, argv);
  }
  return qobject_cast<QApplication*>(QCoreApplication::instance());
}

// Runs `act` on the modal widget shown by `show`, then returns what `show` returned.
// When `act` leaves the dialog open, the guard rejects it and the test fails.
template <typename Show>
auto WhileModal(const std::function<void(QWidget*)>& act, Show&& show) {
  Application();
  bool acted = false;
  QTimer::singleShot(0, [&] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr) {
      ADD_FAILURE() << "no modal dialog is shown";
      return;
    }
    acted = true;
    act(modal);
  });
  QTimer guard;
  guard.setSingleShot(true);
  QObject::connect(&guard, &QTimer::timeout, [] {
    if (QWidget* modal = QApplication::activeModalWidget()) {
      ADD_FAILURE() << "the dialog was left open";
      modal->close();
    }
  });
  guard.start(5000);
  auto result = show();
  EXPECT_TRUE(acted);
  return result;
}

}  // namespace vantrel1::test
