#include <kovakit-qt/widgets/shapi-linux.h>

#include "support/x11-window.h"

#include <QDir>
#include <QWidget>
#include <QtTest>

namespace {

using Items = QVector<quint32>;

int openSockets()
{
    int sockets = 0;
    const QFileInfoList files = QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo &file : files)
        sockets += file.symLinkTarget().contains("socket:");
    return sockets;
}

} // namespace

class ShapiLinuxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void restoresWhatWasThere();
    void restoresNothingOutOfNothing();
    void survivesShortValues();
    void secondDisableSavesTheFirst();
    void doesNothingWithoutAWindow();
    void holdsOneConnection();

private:
    [[nodiscard]] Items hints() const { return readMotifHints(m_window->winId()); }

    QWidget *m_window = nullptr;
    void *m_saved = nullptr;
};

void ShapiLinuxTest::init()
{
    m_saved = nullptr;
    m_window = new QWidget;
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void ShapiLinuxTest::cleanup()
{
    delete m_window;
}

void ShapiLinuxTest::restoresWhatWasThere()
{
    const Items before{3, 62, 126, 1, 9};
    writeMotifHints(m_window->winId(), before);
    SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
    QVERIFY(m_saved);
    // Whatever the last two halves were, the window manager is told: no functions.
    QCOMPARE(hints().mid(0, 3), (Items{1, 0, 6}));
    SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    QCOMPARE(m_saved, nullptr);
    QCOMPARE(hints(), before);

    SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    QCOMPARE(hints(), before);
}

void ShapiLinuxTest::restoresNothingOutOfNothing()
{
    writeMotifHints(m_window->winId(), {});
    QCOMPARE(hints(), Items());
    SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
    QCOMPARE(hints(), (Items{1, 0, 6, 0, 0}));
    SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    QCOMPARE(hints(), (Items{0, 0, 1, 0, 1}));
}

void ShapiLinuxTest::survivesShortValues()
{
    for (int length = 1; length <= 4; ++length) {
        const Items before = Items{7, 5, 3, 1}.mid(0, length);
        writeMotifHints(m_window->winId(), before);
        SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
        SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
        Items padded = before;
        padded.resize(5);
        QCOMPARE(hints(), padded);
    }
}

void ShapiLinuxTest::secondDisableSavesTheFirst()
{
    writeMotifHints(m_window->winId(), {2, 0, 1, 0, 0});
    SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
    void *first = m_saved;
    SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
    SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    QCOMPARE(hints(), (Items{1, 0, 6, 0, 0}));
    SHAPISetCloseButtonOfWindowEnable(m_window, true, &first);
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
    SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
    SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    const int before = openSockets();
    // More than the server has room for.
    for (int i = 0; i < 300; ++i) {
        SHAPISetCloseButtonOfWindowEnable(m_window, false, &m_saved);
        SHAPISetCloseButtonOfWindowEnable(m_window, true, &m_saved);
    }
    QVERIFY(openSockets() <= before);
    QVERIFY(canConnect());
}

QTEST_MAIN(ShapiLinuxTest)
#include "shapi-linux-test.moc"
