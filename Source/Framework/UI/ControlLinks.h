#pragma once

class LListener;
class LView;

/// Adds the listener to every broadcaster inside the view, at whatever depth; panes that come later are not included.
void LinkListenerToControls(LListener& listener, LView& view);
