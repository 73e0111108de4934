#pragma once

#include "Framework/Base/LException.h"
#include "Framework/Base/LListener.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LWindow.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMessageBox;
class QWidget;

/// Writes down what it is told.
class MessageRecorder final : public LListener {
public:
    struct Told {
        MessageT message = 0;
        std::int32_t value = 0;  ///< what the parameter points to; -1 without a parameter

        bool operator==(const Told&) const = default;
    };

    void ListenToMessage(MessageT message, void* ioParam) override;

    /// Everything since the last call.
    [[nodiscard]] std::vector<Told> Take();

private:
    std::vector<Told> m_told;
};

/// A window on the platform without a screen, built from a layout text, shown and active.
class TestWindow {
public:
    /// `panes` are the elements inside the window's own.
    explicit TestWindow(const std::string& panes, const std::string& classID = "wind");

    [[nodiscard]] LWindow& Window() { return *m_window; }

    /// The pane with the id; throws when it is missing or of another class.
    template <typename T>
    [[nodiscard]] T& Pane(PaneIDT id) {
        return *ThrowIfNil(FindPane<T>(*m_window, id), "pane " + std::to_string(id) + " of the test");
    }

    template <typename T>
    [[nodiscard]] T& Widget(PaneIDT id) {
        return *ThrowIfNil(dynamic_cast<T*>(Pane<LPane>(id).Peer()), "widget " + std::to_string(id) + " of the test");
    }

    /// What the window's controls have broadcast since the last call.
    [[nodiscard]] std::vector<MessageRecorder::Told> Told() { return m_recorder.Take(); }

    /// Closes the window for good, before the test ends.
    void Destroy() { m_window.reset(); }

private:
    MessageRecorder m_recorder;
    std::unique_ptr<LWindow> m_window;
};

/// The record of one pane.
[[nodiscard]] LStream Record(const std::string& xml);

/// The alerts on the screen.
[[nodiscard]] std::vector<QMessageBox*> ShownAlerts();

/// An alert's message and explanation, one after the other and without their markup.
[[nodiscard]] std::string TextOf(const QMessageBox& alert);

/// What a screen reader calls the widget.
[[nodiscard]] std::string AccessibleName(QWidget& widget);

/// Runs the event loop until the condition holds. Answers whether it did before it was hopeless to wait.
[[nodiscard]] bool RunEventsUntil(const std::function<bool()>& condition);
