// What the pop-up buttons and combo boxes of the panels offer. The tags are the values of the records'
// arguments, but for the encodings, which have menu tags of their own.
#pragma once

#include <vector>

#include "shell/controls.h"

namespace quillet {

// From tag 0.
std::vector<PopUpButton::Item> characterClassItems();
std::vector<PopUpButton::Item> lineSkipTypeItems();
std::vector<PopUpButton::Item> trimTypeItems();
std::vector<PopUpButton::Item> trimFromWhereItems();
std::vector<PopUpButton::Item> replaceTypeItems();
std::vector<PopUpButton::Item> fillTypeItems();

// From tag 1.
std::vector<PopUpButton::Item> encodingItems();
std::vector<PopUpButton::Item> reformatAsItems();
std::vector<PopUpButton::Item> writeModeItems();

// From tag 1: samples of today at 20:13:01, each as its format prints it. In a date time the time brings the
// zone, so the date there has no format with one.
enum class DateSamples { Alone, OfDateTime };
std::vector<PopUpButton::Item> dateFormatItems(DateSamples samples);
std::vector<PopUpButton::Item> timeFormatItems();

std::vector<ComboBox::Item> lineSeparatorItems();
std::vector<ComboBox::Item> columnSeparatorItems();

}  // namespace quillet
