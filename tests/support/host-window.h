// SPDX-License-Identifier: MIT

#pragma once

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>

// A window as applications have them: fields, a button, a menu, shortcuts of its own.
class HostWindow : public QMainWindow
{
public:
    HostWindow()
    {
        auto *content = new QWidget;
        auto *layout = new QVBoxLayout(content);
        layout->addWidget(edit);
        layout->addWidget(button);
        layout->addStretch();
        setCentralWidget(content);
        const auto count = [this] { ++shortcuts; };
        menuBar()->addMenu("&File")->addAction("Save", this, count, QKeySequence("Ctrl+S"));
        for (const char *keys : {"Return", "Escape", "Tab", "F5", "Space"})
            connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, count);
        connect(button, &QPushButton::clicked, this, [this] { ++clicks; });
        resize(800, 500);
    }

    QLineEdit *edit = new QLineEdit;
    QPushButton *button = new QPushButton("&Start");
    int shortcuts = 0;
    int clicks = 0;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

// What happens to a window, as a column of a table.
using Change = std::function<void(HostWindow &)>;
Q_DECLARE_METATYPE(Change)

// A test each of whose functions finds a window on the screen, with the focus in its field.
class HostWindowTest : public QObject
{
    Q_OBJECT

protected:
    // Has @p act done as soon as @p sheet is up, and returns what the sheet ends with.
    template<typename Sheet, typename Act>
    static int run(Sheet &sheet, Act act)
    {
        QTimer::singleShot(0, &sheet, act);
        return sheet.exec();
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        press(m_window.get(), key, modifiers);
    }

    std::unique_ptr<HostWindow> m_window;

protected Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init()
    {
        m_window = std::make_unique<HostWindow>();
        showActive(m_window.get());
        m_window->edit->setFocus();
    }
    void cleanup() { m_window.reset(); }
};
