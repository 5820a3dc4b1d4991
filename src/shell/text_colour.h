#pragma once

namespace quillet {

// The colours that the application gives to a text; which colour that is, the palette tells.
enum class TextColour { SecondaryLabel, Red };

}  // namespace quillet
