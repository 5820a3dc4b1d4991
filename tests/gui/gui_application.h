// A whole Quillet with its windows in a home of its own, on a screen that nobody sees.
#pragma once

#include <QApplication>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/temporary_folder.h"
#include "ui/quillet_application.h"
#include "ui/temporary_folders.h"

namespace quillet::testing {

class GuiTest : public ::testing::Test {
 protected:
  ui::QuilletApplication& quillet() {
    if (!quillet_)
      quillet_ =
          std::make_unique<ui::QuilletApplication>(std::make_shared<ui::TemporaryFolders>(home_.path()));
    return *quillet_;
  }
  AppDelegate& application() { return quillet().application(); }
  void launch(const std::vector<std::string>& paths = {}) {
    quillet().launch(paths);
    QApplication::processEvents();
  }
  // Stores the session; the next launch begins with it.
  void terminate() {
    quillet().terminate();
    quillet_.reset();
  }

  template <typename Widget>
  Widget* find(const char* window, const char* name) {
    QWidget* form = quillet().windows().widget(window);
    return form ? form->findChild<Widget*>(QLatin1String(name)) : nullptr;
  }

  TemporaryFolder home_;

 private:
  std::unique_ptr<ui::QuilletApplication> quillet_;
};

}  // namespace quillet::testing
