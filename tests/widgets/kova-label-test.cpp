#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>

namespace {

const QString &longText()
{
    static const QString text =
        QStringLiteral("The backup of your documents runs every evening, as long as the computer "
                       "is plugged in and the network drive can be reached.");
    return text;
}

} // namespace

class KovaLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void isStyled();
    void growsAndShrinksWithItsText();
    void keepsItsMinimumHeight_data();
    void keepsItsMinimumHeight();
};

void KovaLabelTest::isStyled()
{
    QWidget parent;
    const KovaLabel empty(&parent, Qt::WindowFlags());
    const KovaLabel label(longText(), &parent);
    QCOMPARE(empty.text(), QString());
    QCOMPARE(label.text(), longText());
    QCOMPARE(label.parent(), &parent);
    for (const KovaLabel *each : {&empty, &label})
        QCOMPARE(each->styleSheet(), getStyleSheet("component.label", false));
}

void KovaLabelTest::growsAndShrinksWithItsText()
{
    KovaLabel label(longText());
    label.setWordWrap(true);
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    label.resize(150, 10);
    label.show();
    const int narrow = label.minimumHeight();
    QVERIFY(narrow >= 4 * label.fontMetrics().height());
    label.resize(400, label.height());
    QVERIFY(label.minimumHeight() < narrow);
    QVERIFY(label.minimumHeight() >= 2 * label.fontMetrics().height());
    label.resize(150, label.height());
    QCOMPARE(label.minimumHeight(), narrow);
    QVERIFY(label.height() >= narrow);
}

void KovaLabelTest::keepsItsMinimumHeight_data()
{
    QTest::addColumn<bool>("wraps");
    QTest::addColumn<int>("policy");
    QTest::newRow("no wrap") << false << int(QSizePolicy::Minimum);
    QTest::newRow("expanding") << true << int(QSizePolicy::MinimumExpanding);
    QTest::newRow("preferred") << true << int(QSizePolicy::Preferred);
}

void KovaLabelTest::keepsItsMinimumHeight()
{
    QFETCH(bool, wraps);
    QFETCH(int, policy);
    KovaLabel label(longText());
    label.setWordWrap(wraps);
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Policy(policy));
    label.setMinimumHeight(7);
    label.show();
    for (const int width : {120, 300, 90}) {
        label.resize(width, 40);
        QCOMPARE(label.minimumHeight(), 7);
    }
}

QTEST_MAIN(KovaLabelTest)
#include "kova-label-test.moc"
