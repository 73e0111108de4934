#pragma once

class LStream;
class LWindow;
class QMenuBar;

/// The menus of a window. They are an XML text: a "menubar" of "menu"s with a "text" (an ampersand comes before the
/// letter that opens the menu with Alt), each of which holds "item"s and "separator"s. An item has a "text", a "key"
/// such as "Ctrl+R" or none, and either a "command", which starts its way up the commander chain at the window, or a
/// "message".
///
/// A message is that of one of the window's controls: the item can be chosen when the control can be used, and does
/// what the control does. Where no control has the message, the window is told it as a listener. A key that a button of
/// the window has is shown and left to the button.
///
/// What can be chosen is asked when a menu opens, and again when an item is chosen by its key.
namespace LMenuBar {

/// Fills `bar` with the menus of the resource Menus/<id>.xml. The bar belongs to the window. Throws
/// `LResourceException` when the resource is missing or not written as it should be.
void Install(int menuBarID, LWindow& window, QMenuBar& bar);

/// The same with menus that have been read already.
void Fill(const LStream& menus, LWindow& window, QMenuBar& bar);

}  // namespace LMenuBar
