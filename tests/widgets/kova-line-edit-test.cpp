#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

namespace {

// Design pixels on the display that the test's environment asks for.
int scaled(int designPixels)
{
    return designPixels * qEnvironmentVariableIntValue("QT_FONT_DPI") / 96;
}

bool isPort(const QString &text)
{
    const int number = text.toInt();
    return number > 0 && number < 65536;
}

QString accessibleText(QWidget *widget, QAccessible::Text kind)
{
    return QAccessible::queryAccessibleInterface(widget)->text(kind);
}

} // namespace

class KovaLineEditTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void laysOutARow();
    void validatesWhenAsked();
    void errorComesAndGoes();
    void errorIsTold();
    void labelsLeadIntoTheField();
    void labelsNameTheField();
};

void KovaLineEditTest::laysOutARow()
{
    KovaLineEdit edit;
    edit.getPreLabel()->setText(QStringLiteral("Port"));
    edit.getPostLabel()->setText(QStringLiteral("TCP"));
    edit.show();
    const QRect pre = edit.getPreLabel()->geometry();
    const QRect post = edit.getPostLabel()->geometry();
    QCOMPARE(pre.left(), 0);
    QCOMPARE(edit.getLineEdit()->x(), pre.right() + 1);
    QCOMPARE(post.left(), edit.getLineEdit()->geometry().right() + 1);

    edit.setMargins(5, 3, 7, 9);
    edit.setSpacing(3);
    edit.adjustSize();
    QCOMPARE(edit.getPreLabel()->x(), scaled(5));
    QCOMPARE(edit.getLineEdit()->x(), scaled(5) + pre.width() + scaled(3));
    QCOMPARE(edit.width(), edit.getPostLabel()->geometry().right() + 1 + scaled(7));
    QCOMPARE(edit.layout()->contentsMargins().bottom(), scaled(9));
}

void KovaLineEditTest::validatesWhenAsked()
{
    KovaLineEdit edit;
    QVERIFY(edit.validate());
    edit.setValidator(isPort);
    QVERIFY(!edit.validate());
    QVERIFY(!edit.getLineEdit()->property("error").isValid());
    edit.getLineEdit()->setText(QStringLiteral("8080"));
    QVERIFY(edit.validate());
    QCOMPARE(edit.getEditText(), QStringLiteral("8080"));
    edit.getLineEdit()->setText(QStringLiteral("http"));
    QVERIFY(!edit.validate());
    edit.setValidator(nullptr);
    QVERIFY(edit.validate());
}

void KovaLineEditTest::errorComesAndGoes()
{
    KovaLineEdit edit;
    edit.show();
    QVERIFY(QTest::qWaitForWindowActive(&edit));
    const QImage right = edit.grab().toImage();
    edit.setError(true);
    const QImage wrong = edit.grab().toImage();
    QVERIFY(right != wrong);
    edit.setError(false);
    QCOMPARE(edit.grab().toImage(), right);
    QCOMPARE(edit.getLineEdit()->property("error"), QVariant(false));
    edit.setError(true);
    QCOMPARE(edit.grab().toImage(), wrong);
}

void KovaLineEditTest::errorIsTold()
{
    KovaLineEdit edit;
    QLineEdit *field = edit.getLineEdit();
    const auto description = [field] { return accessibleText(field, QAccessible::Description); };
    const QString sign(QChar(0x26A0));
    edit.setError(false);
    QCOMPARE(description(), QString());
    edit.setError(true);
    edit.setError(true);
    QCOMPARE(description(), sign);
    edit.setError(false);
    QCOMPARE(description(), QString());

    field->setAccessibleDescription(QStringLiteral("From 1 to 65535"));
    edit.setError(true);
    QCOMPARE(description(), sign + QStringLiteral(" From 1 to 65535"));
    edit.setError(false);
    QCOMPARE(description(), QStringLiteral("From 1 to 65535"));

    edit.setError(true);
    field->setAccessibleDescription(QStringLiteral("The owner's new words"));
    edit.setError(false);
    QCOMPARE(description(), QStringLiteral("The owner's new words"));
}

void KovaLineEditTest::labelsLeadIntoTheField()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *first = new KovaLineEdit(&window);
    auto *second = new KovaLineEdit(&window);
    first->getPreLabel()->setText(QStringLiteral("&Host"));
    second->getPreLabel()->setText(QStringLiteral("Connect"));
    second->getPostLabel()->setText(QStringLiteral("to &port"));
    layout->addWidget(first);
    layout->addWidget(second);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    second->setFocus();
    QCOMPARE(window.focusWidget(), second->getLineEdit());
    QTest::keyClick(window.windowHandle(), Qt::Key_H, Qt::AltModifier);
    QCOMPARE(window.focusWidget(), first->getLineEdit());
    QTest::keyClick(window.windowHandle(), Qt::Key_P, Qt::AltModifier);
    QCOMPARE(window.focusWidget(), second->getLineEdit());
    QTest::keyClick(window.windowHandle(), Qt::Key_4);
    QCOMPARE(second->getEditText(), QStringLiteral("4"));
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    QCOMPARE(window.focusWidget(), first->getLineEdit());
}

void KovaLineEditTest::labelsNameTheField()
{
    KovaLineEdit edit;
    edit.show();
    edit.getPostLabel()->setText(QStringLiteral("&days"));
    QTRY_COMPARE(accessibleText(edit.getLineEdit(), QAccessible::Name), QStringLiteral("days"));
    edit.getPreLabel()->setText(QStringLiteral("&Keep for"));
    QTRY_COMPARE(accessibleText(edit.getLineEdit(), QAccessible::Name), QStringLiteral("Keep for"));
}

QTEST_MAIN(KovaLineEditTest)
#include "kova-line-edit-test.moc"
