#pragma once

#include "Platform/DrawingTypes.h"

/// How the program looks: one set of colours for all windows, on every desktop.
namespace Look {

/// A high contrast is for people who set their desktop to one.
enum class Contrast { Normal, High };

/// What a colour is used for. Every text role is readable on `Window`, `Field` and `Button`, `OnAccent` on `Accent`.
enum class Role {
    Window,
    Field,
    Button,
    ButtonHover,
    ButtonPressed,
    Outline,       ///< around buttons and fields
    FaintOutline,  ///< around what is disabled, and around groups
    Track,         ///< what thumbs move in
    Thumb,
    Text,
    CaptionText,
    QuietText,
    DisabledText,
    AlarmText,
    Accent,
    OnAccent,
    Signal,  ///< the accent as small signs show it
    Focus,   ///< around what has the keyboard
};

[[nodiscard]] RGBColor ColorOf(Role role, Contrast contrast);
/// The colour for the contrast in force.
[[nodiscard]] RGBColor ColorOf(Role role);

/// Gives the application its style and colours; once, after the system's application object was made and before the
/// first window. Size and kind of the font stay the desktop's.
void Apply();

[[nodiscard]] Contrast ContrastInForce();

}  // namespace Look
