#pragma once

#include "foundation/path_name.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QUrl>
#include <QWidget>

#include <functional>
#include <stdexcept>

namespace stowlark {

/// What went wrong on a tour.
class TourFailure : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Uses a window as a person does, with mouse and keyboard, and saves what it shows. Controls are found by
/// their labels. Throws TourFailure if something does not appear.
class Driver {
public:
    Driver(QQuickWindow *window, Path screenshots);

    /// Presses the visible button with this label, or the one named so to screen readers.
    void press(const QString &label);
    /// Opens the picker with this name and chooses the entry at `index`.
    void choose(const QString &name, int index);
    /// Replaces the text of the field with this name.
    void type(const QString &name, const QString &text);
    /// Drags files over the middle of the item that shows `text`; `hovering` is called before they are let
    /// go.
    void drop(const QString &text, const QList<QUrl> &files, const std::function<void()> &hovering = {});
    /// In the file dialog that opens: enters the path and accepts.
    void enterInDialog(const Path &path);

    /// Waits for the alert with this title, and presses its button.
    void dismissAlert(const QString &title);
    void resize(QSize size);
    void wait(const QString &what, const std::function<bool()> &condition, int seconds = 60);
    /// Saves the window as "NN-name.png".
    void screenshot(const QString &name);

private:
    void save(QWidget &dialog) const;
    QQuickItem *find(const std::function<bool(QQuickItem *)> &fits) const;
    QQuickItem *findNamed(const QString &name);
    QPoint bringIntoSight(QQuickItem *item);

    QQuickWindow *window_;
    Path screenshots_;
    int screenshotCount_ = 0;
};

} // namespace stowlark
