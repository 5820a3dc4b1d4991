#include "ui/binder.h"

#include <QPushButton>
#include <gtest/gtest.h>

#include "shell/controls.h"
#include "shell/window.h"
#include "support/qt_application.h"

namespace quillet::ui {
namespace {

TEST(Binder, KeepsTheMnemonicOfAButtonWhileTheTitleIsThatOfItsForm) {
  quillet::testing::qtApplication();
  struct Case {
    QString formText;
    std::u16string title;
  };
  const Case cases[] = {{QStringLiteral("&Save Job…"), u"Save Job…"},
                        {QStringLiteral("保存(&S)…"), u"保存…"}};
  for (const Case& one : cases) {
    UserInterface interface;
    Window window(interface, "window", u"Quillet");
    Button button(window, "saveJobButton", one.title, "");
    QWidget form;
    auto* widget = new QPushButton(one.formText, &form);
    widget->setObjectName(QStringLiteral("saveJobButton"));
    ASSERT_TRUE(bindControls(window, form).empty());
    EXPECT_EQ(widget->text(), one.formText);
    button.setTitle(u"Stop & go");
    EXPECT_EQ(widget->text(), QStringLiteral("Stop && go"));
    button.setTitle(one.title);
    EXPECT_EQ(widget->text(), one.formText);
    button.setObserver({});
  }
}

}  // namespace
}  // namespace quillet::ui
