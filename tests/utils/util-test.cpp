#include <kovakit-qt/utils/util.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

class UtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void walksParentsBeforeChildren();
    void leavesOutHiddenSubtreesAndExcludedWidgets();
    void comparesFocusLevelsAsNumbers();
    void adjustsPolicies();

private:
    QWidget *m_form = nullptr;
    QLineEdit *m_edit = nullptr;
    QDialogButtonBox *m_box = nullptr;
    QWidget *m_ok = nullptr;
    QWidget *m_cancel = nullptr;
};

void UtilTest::init()
{
    m_form = new QWidget;
    m_edit = new QLineEdit;
    m_box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = m_box->button(QDialogButtonBox::Ok);
    m_cancel = m_box->button(QDialogButtonBox::Cancel);
    auto *layout = new QVBoxLayout(m_form);
    layout->addWidget(m_edit);
    layout->addWidget(m_box);
    m_form->show();
}

void UtilTest::cleanup()
{
    delete m_form;
}

void UtilTest::walksParentsBeforeChildren()
{
    QCOMPARE(accessibleList(m_form, QList<QWidget *>()),
             (QList<QWidget *>{m_edit, m_ok, m_cancel}));
    m_box->setFocusPolicy(Qt::ClickFocus);
    QCOMPARE(accessibleList(m_form, QList<QWidget *>()),
             (QList<QWidget *>{m_edit, m_box, m_ok, m_cancel}));
    QCOMPARE(accessibleList(m_form, AccessibleFilter()),
             (QList<QWidget *>{m_form, m_edit, m_box, m_ok, m_cancel}));
}

void UtilTest::leavesOutHiddenSubtreesAndExcludedWidgets()
{
    QCOMPARE(accessibleList(nullptr, AccessibleFilter()), QList<QWidget *>());
    m_box->setFocusPolicy(Qt::StrongFocus);
    QCOMPARE(accessibleList(m_form, {m_box, m_edit}), (QList<QWidget *>{m_ok, m_cancel}));
    QCOMPARE(accessibleList(m_form, AccessibleFilter({m_form, m_box}, Qt::NoFocus)),
             (QList<QWidget *>{m_edit, m_ok, m_cancel}));
    m_box->hide();
    QCOMPARE(accessibleList(m_form, QList<QWidget *>()), QList<QWidget *>{m_edit});
    m_form->hide();
    QCOMPARE(accessibleList(m_form, AccessibleFilter()), QList<QWidget *>());
}

void UtilTest::comparesFocusLevelsAsNumbers()
{
    m_edit->setFocusPolicy(Qt::ClickFocus);
    m_ok->setFocusPolicy(Qt::TabFocus);
    m_cancel->setFocusPolicy(Qt::WheelFocus);
    AccessibleFilter filter;
    filter.setFocusLevel(Qt::TabFocus);
    QCOMPARE(accessibleList(m_form, filter), (QList<QWidget *>{m_edit, m_ok, m_cancel}));
    filter.setFocusLevel(Qt::StrongFocus);
    QCOMPARE(accessibleList(m_form, filter), QList<QWidget *>{m_cancel});
    filter.filterWidgets().append(m_cancel);
    QCOMPARE(accessibleList(m_form, filter), QList<QWidget *>());
}

void UtilTest::adjustsPolicies()
{
    adjustFocusPolicy(Qt::NoFocus, {});
    adjustFocusPolicy(Qt::NoFocus, {m_edit, m_ok});
    QCOMPARE(accessibleList(m_form, QList<QWidget *>()), QList<QWidget *>{m_cancel});
}

QTEST_MAIN(UtilTest)
#include "util-test.moc"
