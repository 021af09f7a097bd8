// SPDX-License-Identifier: MIT

#include <kovakit-qt/widgets/shapi-linux.h>

#include "support/x11-window.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using Items = QVector<quint32>;

int openSockets()
{
    int sockets = 0;
    for (const QFileInfo &file : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System))
        sockets += file.symLinkTarget().contains("socket:");
    return sockets;
}

} // namespace

class ShapiLinuxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void restoresWhatWasThere();
    void secondDisableSavesTheFirst();
    void doesNothingWithoutAWindow();
    void holdsOneConnection();

private:
    [[nodiscard]] Items hints() const { return readMotifHints(m_window->winId()); }
    void enable(bool enabled)
    {
        SHAPISetCloseButtonOfWindowEnable(m_window.get(), enabled, &m_saved);
    }

    std::unique_ptr<QWidget> m_window;
    void *m_saved = nullptr;
};

void ShapiLinuxTest::init()
{
    m_saved = nullptr;
    m_window = std::make_unique<QWidget>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void ShapiLinuxTest::restoresWhatWasThere()
{
    const QPair<Items, Items> cases[] = {
        {{3, 62, 126, 1, 9}, {3, 62, 126, 1, 9}},
        // Too short, the value comes back padded.
        {{7, 5, 3, 1}, {7, 5, 3, 1, 0}},
        {{7}, {7, 0, 0, 0, 0}},
        // Where there was nothing, the functions come back as the window manager's own.
        {{}, {0, 0, 1, 0, 1}},
    };
    for (const auto &[before, after] : cases) {
        writeMotifHints(m_window->winId(), before);
        enable(false);
        QVERIFY(m_saved);
        // Whatever the last two items were, the window manager is told: no functions.
        QCOMPARE(hints().mid(0, 3), (Items{1, 0, 6}));
        enable(true);
        QCOMPARE(m_saved, nullptr);
        QCOMPARE(hints(), after);
        enable(true);
        QCOMPARE(hints(), after);
    }
}

void ShapiLinuxTest::secondDisableSavesTheFirst()
{
    writeMotifHints(m_window->winId(), {2, 0, 1, 0, 0});
    enable(false);
    void *first = m_saved;
    enable(false);
    enable(true);
    QCOMPARE(hints(), (Items{1, 0, 6, 0, 0}));
    SHAPISetCloseButtonOfWindowEnable(m_window.get(), true, &first);
    QCOMPARE(hints(), (Items{2, 0, 1, 0, 0}));
}

void ShapiLinuxTest::doesNothingWithoutAWindow()
{
    QWidget never;
    SHAPISetCloseButtonOfWindowEnable(&never, false, &m_saved);
    QCOMPARE(m_saved, nullptr);
    SHAPISetCloseButtonOfWindowEnable(nullptr, false, &m_saved);
}

void ShapiLinuxTest::holdsOneConnection()
{
    enable(false);
    enable(true);
    const int before = openSockets();
    // More than the server has room for.
    for (int i = 0; i < 300; ++i) {
        enable(false);
        enable(true);
    }
    QVERIFY(openSockets() <= before);
    QVERIFY(canConnect());
}

QTEST_MAIN(ShapiLinuxTest)
#include "shapi-linux-test.moc"
