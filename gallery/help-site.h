// SPDX-License-Identifier: MIT

#pragma once

#include <QTcpServer>
#include <QTemporaryDir>

class QTcpSocket;

// A small help site: an article with two pictures in English and German, as offline help in a
// folder and on a web server of its own on the loopback address.
class HelpSite : public QObject
{
    Q_OBJECT

public:
    // How the server treats a request. With Nothing it is gone, and there is no offline page.
    enum Mode { Answers, NotFound, Slow, Silent, Gone, Nothing };

    HelpSite();

    void setMode(Mode mode);

    // The server, for HelpWindow::setKnowledgeBaseHost().
    [[nodiscard]] QString address() const;

    // The folder of the offline help, and its page.
    [[nodiscard]] QString offlineFolder() const { return m_folder.path(); }
    [[nodiscard]] QString offlinePage() const;

private:
    void accept();
    void answer(QTcpSocket *socket);
    [[nodiscard]] QByteArray bodyOf(const QByteArray &target) const;

    QTcpServer m_server;
    QTemporaryDir m_folder;
    quint16 m_port = 0;
    Mode m_mode = Answers;
};
