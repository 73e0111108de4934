#include "Framework/UI/LMenuBar.h"

#include "Framework/Base/EmbeddedResources.h"
#include "Framework/Base/LException.h"
#include "Framework/Base/LListener.h"
#include "Framework/UI/LControl.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/WidgetTexts.h"

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <string>
#include <string_view>

namespace {

/// What an item does.
struct Deed {
    CommandT command = 0;
    MessageT message = 0;
};

/// The first pane inside the view of which `fits` is true.
template <typename T, typename Condition>
T* FindInside(const LView& view, const Condition& fits) {
    for (const auto& pane : view.SubPanes()) {
        if (auto* found = dynamic_cast<T*>(pane.get()); found != nullptr && fits(*found)) {
            return found;
        }
        if (const auto* inside = dynamic_cast<const LView*>(pane.get())) {
            if (T* found = FindInside<T>(*inside, fits)) {
                return found;
            }
        }
    }
    return nullptr;
}

LControl* ControlWithMessage(const LWindow& window, MessageT message) {
    return FindInside<LControl>(window, [&](const LControl& control) { return control.GetValueMessage() == message; });
}

bool CanBeDone(LWindow& window, const Deed& deed) {
    if (deed.command != 0) {
        return window.FindCommandStatus(deed.command);
    }
    const LControl* control = ControlWithMessage(window, deed.message);
    return control == nullptr || (control->IsEnabled() && control->IsVisible());
}

void Do(LWindow& window, const Deed& deed) {
    if (!CanBeDone(window, deed)) {
        return;
    }
    if (deed.command != 0) {
        window.ProcessCommand(deed.command);
    } else if (LControl* control = ControlWithMessage(window, deed.message)) {
        control->BroadcastValueMessage();
    } else if (auto* listener = dynamic_cast<LListener*>(&window)) {
        listener->ListenToMessage(deed.message, nullptr);
    }
}

/// The key is the action's own unless a button of the window has it; two owners of one key would block each other.
void GiveKey(QAction& action, const std::string& key, const LWindow& window) {
    const QKeySequence sequence(WidgetTexts::FromPane(key), QKeySequence::PortableText);
    if (FindInside<LStdButton>(window, [&](const LStdButton& button) { return button.Key() == key; }) == nullptr) {
        action.setShortcut(sequence);
    } else {
        action.setText(action.text() + QLatin1Char('\t') + sequence.toString(QKeySequence::NativeText));
    }
}

void AddItem(QMenu& menu, const LStream& record, LWindow& window) {
    const Deed deed{.command = record.Number("command"), .message = record.Number("message")};
    if (record.ClassID() != "item" || (deed.command == 0) == (deed.message == 0)) {
        throw LResourceException(record.Description() + ": an item has a command or a message");
    }
    QAction* action = menu.addAction(QString::fromStdString(record.Text("text")));
    if (const std::string key = LayoutAttributes::Key(record); !key.empty()) {
        GiveKey(*action, key, window);
    }
    QObject::connect(action, &QAction::triggered, &menu, [&window, deed] { Do(window, deed); });
    QObject::connect(&menu, &QMenu::aboutToShow, action,
                     [&window, deed, action] { action->setEnabled(CanBeDone(window, deed)); });
    // What is true while the menu is open says nothing about the key later.
    QObject::connect(&menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
}

void AddMenu(QMenuBar& bar, const LStream& record, LWindow& window) {
    if (record.ClassID() != "menu" || !record.Has("text")) {
        throw LResourceException(record.Description() + ": a menu bar holds menus that have a text");
    }
    QMenu* menu = bar.addMenu(QString::fromStdString(record.Text("text")));
    for (const LStream& inside : record.SubPanes()) {
        if (inside.ClassID() == "separator") {
            menu->addSeparator();
        } else {
            AddItem(*menu, inside, window);
        }
    }
}

}  // namespace

void LMenuBar::Install(int menuBarID, LWindow& window, QMenuBar& bar) {
    const std::string number = std::to_string(menuBarID);
    const std::string_view xml = FindEmbeddedResource("Menus/" + number + ".xml");
    if (xml.data() == nullptr) {
        throw LResourceException("menu bar " + number + " is missing");
    }
    Fill(LStream::Parse(xml, "menu bar " + number), window, bar);
}

void LMenuBar::Fill(const LStream& menus, LWindow& window, QMenuBar& bar) {
    for (const LStream& menu : menus.SubPanes()) {
        AddMenu(bar, menu, window);
    }
}
