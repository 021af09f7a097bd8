// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-qt.h>

#include <QtWidgets>

#include <vector>

#if __has_include(<kovakit-qt/single-application/qtsingleapplication.h>)
#include <kovakit-qt/single-application/qtsingleapplication.h>
#else
class QtSingleApplication : public QApplication
{
public:
    QtSingleApplication(const QString &, int &, char **);
    bool isRunning();
    bool sendMessage(const QString &);
    void setActivationWindow(QWidget *);
    void messageReceived(const QString &);
};
#endif

// A host's window, with everything that the guides take for granted.
class MainWindow : public QWidget
{
public:
    void open(const QString &message);
};

class Guide : public QWidget
{
public:
    template<int>
    int block(int argc, char **argv);

    void loadPage();
    void showFolder(const QString &path);
    void createFolder(const QString &name);
    void restart();

    QWidget *window;
    KovaLineEdit *port;
    KovaButtonPath *bar;
    QString title, text, argumentsAsText;
    QString themeFolder, resourceFolder, userFolder, helpFolder;
    QMap<QString, QString> strings;
    std::vector<QString> styleFiles;
    int countOfRows;
    int rows;
};

using LogView = Guide;
