#pragma once

#include "Framework/UI/LPane.h"

/// The widgets of panes as what the panes' classes made them.

/// The pane's widget; null while it has none.
template <typename T>
[[nodiscard]] T* PeerIfAny(const LPane& pane) {
    return dynamic_cast<T*>(pane.Peer());
}

/// The widget of a pane that has one.
template <typename T>
[[nodiscard]] T& PeerOf(const LPane& pane) {
    return dynamic_cast<T&>(*pane.Peer());
}
