// Every text can be read and every border seen, in both palettes: WCAG 2, level AA.
#include <QColor>
#include <QPalette>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ui/desktop_look.h"
#include "ui/theme.h"

namespace quillet::ui {
namespace {

constexpr double kText = 4.5;
constexpr double kShape = 3.0;  // what is no text: borders, bars, icons

TEST(Contrast, IsMeasuredAsWcagDoes) {
  EXPECT_NEAR(contrastOf(Qt::black, Qt::white), 21.0, 0.001);
  EXPECT_NEAR(contrastOf(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
  EXPECT_NEAR(contrastOf(Qt::white, Qt::white), 1.0, 0.001);
}

struct Pair {
  std::string what;
  QColor front;
  QColor back;
  double least;
};

// As the delegates and the style sheet put them upon each other.
std::vector<Pair> pairsOf(const Colours& c) {
  return {
      {"text in a window", c.text, c.window, kText},
      {"text in a list", c.text, c.base, kText},
      {"text in every second row", c.text, c.alternate, kText},
      {"secondary text in a window", c.secondary, c.window, kText},
      {"detail of a row", c.secondary, c.base, kText},
      {"red status", c.red, c.window, kText},
      {"empty text", c.placeholder, c.base, kText},
      {"link in a window", c.link, c.window, kText},
      {"link in a text", c.link, c.base, kText},
      {"selected row with the keys", c.selectedText, c.selectedFill, kText},
      {"selected cell without the keys", c.cellUnfocusedText, c.cellUnfocused, kText},
      {"selected row without the keys", c.text, c.selectedRow, kText},
      {"detail of a selected row without the keys", c.selectedRowDetail, c.selectedRow, kText},
      {"header", c.headerText, c.header, kText},
      {"badge of a clipboard job", Qt::black, kClipboardJobBadge, kText},
      {"badge of a file job", Qt::black, kFileJobBadge, kText},
      {"Run Job", c.selectedText, c.selectedFill, kText},
      {"fill of a selected row", c.selectedFill, c.base, kShape},
      {"fill of a selected cell without the keys", c.cellUnfocused, c.base, kShape},
      {"bar of a selected row without the keys", c.link, c.selectedRow, kShape},
      {"frame of the focus in a list", c.link, c.base, kShape},
      {"frame of the focus in a window", c.link, c.window, kShape},
      {"frame of a missing cell", c.missing, c.base, kShape},
      {"frame of a missing cell in every second row", c.missing, c.alternate, kShape},
      {"frame of a selected missing cell", c.missingSelected, c.selectedFill, kShape},
      {"icon in a window", c.icon, c.window, kShape},
      {"icon of a row", c.icon, c.base, kShape},
      {"icon of a selected row without the keys", c.icon, c.selectedRow, kShape},
      {"icon of a selected row with the keys", Qt::white, c.selectedFill, kShape},
      {"border of a field in a window", c.missing, c.window, kShape},
      {"border of a field upon itself", c.missing, c.base, kShape},
  };
}

std::vector<Pair> pairsOf(const QPalette& p) {
  const auto colour = [&](QPalette::ColorRole role) { return p.color(QPalette::Active, role); };
  return {
      {"text of a window", colour(QPalette::WindowText), colour(QPalette::Window), kText},
      {"text of a field", colour(QPalette::Text), colour(QPalette::Base), kText},
      {"placeholder of a field", colour(QPalette::PlaceholderText), colour(QPalette::Base), kText},
      {"button", colour(QPalette::ButtonText), colour(QPalette::Button), kText},
      {"tool tip", colour(QPalette::ToolTipText), colour(QPalette::ToolTipBase), kText},
      {"link", colour(QPalette::Link), colour(QPalette::Base), kText},
      {"visited link", colour(QPalette::LinkVisited), colour(QPalette::Base), kText},
      {"selected text, item of an open menu", colour(QPalette::HighlightedText), colour(QPalette::Highlight),
       kText},
      {"menu", colour(QPalette::Text), colour(QPalette::Base), kText},
      {"focus of Run Job", colour(QPalette::Text), colour(QPalette::Window), kShape},
      {"selected text in a field without the keys", p.color(QPalette::Inactive, QPalette::HighlightedText),
       p.color(QPalette::Inactive, QPalette::Highlight), kText},
  };
}

void expectReadable(const std::vector<Pair>& pairs, const char* palette) {
  for (const Pair& pair : pairs)
    EXPECT_GE(contrastOf(pair.front, pair.back), pair.least)
        << palette << ": " << pair.what << ", " << pair.front.name().toStdString() << " on "
        << pair.back.name().toStdString();
}

TEST(Contrast, EveryTextAndEveryShapeOfBothPalettesIsSeen) {
  for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
    const char* name = scheme == Scheme::Light ? "light" : "dark";
    expectReadable(pairsOf(coloursOf(scheme)), name);
    expectReadable(pairsOf(paletteOf(scheme)), name);
  }
}

TEST(Contrast, TheColoursOfTheTableAreAsAgreed) {
  struct Case {
    QColor Colours::*colour;
    const char* light;
    const char* dark;
  };
  const Case cases[] = {
      {&Colours::window, "#eef0f2", "#26292e"},          {&Colours::base, "#ffffff", "#1b1e22"},
      {&Colours::alternate, "#f5f7f9", "#22262b"},       {&Colours::text, "#1f2328", "#e6e8eb"},
      {&Colours::secondary, "#57606a", "#a3abb5"},       {&Colours::red, "#b42318", "#ff8a80"},
      {&Colours::placeholder, "#6b7480", "#8f98a3"},     {&Colours::link, "#1f5fbf", "#7fb0ff"},
      {&Colours::selectedFill, "#1f5fbf", "#3874d6"},    {&Colours::selectedText, "#ffffff", "#ffffff"},
      {&Colours::cellUnfocused, "#838d98", "#79838e"},   {&Colours::cellUnfocusedText, "#000000", "#000000"},
      {&Colours::selectedRow, "#d5dce4", "#3f4751"},     {&Colours::header, "#e6e9ec", "#2d3137"},
      {&Colours::headerText, "#57606a", "#a3abb5"},      {&Colours::missing, "#808080", "#808080"},
      {&Colours::missingSelected, "#e3e6ea", "#e3e6ea"}, {&Colours::icon, "#3b4754", "#c3cad3"}};
  for (const Case& one : cases) {
    EXPECT_EQ((coloursOf(Scheme::Light).*one.colour).name(), QLatin1String(one.light));
    EXPECT_EQ((coloursOf(Scheme::Dark).*one.colour).name(), QLatin1String(one.dark));
  }
}

}  // namespace
}  // namespace quillet::ui
