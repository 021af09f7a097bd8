// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets>

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
