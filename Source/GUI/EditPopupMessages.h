#pragma once

#include "Framework/Base/LBroadcaster.h"

/// What the parts of an edit-popup field tell each other.
enum EditPopupMessage : MessageT {
    kPopupItemPicked = -100,    ///< the picked item's text goes into the field
    kMatchPopupToField = -101,  ///< the item whose text equals the field's gets the tick
    kPreviousItem = -102,
    kNextItem = -103,
    kFieldEdited = -104  ///< the user has changed the field's text
};
