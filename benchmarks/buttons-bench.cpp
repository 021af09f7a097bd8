// SPDX-License-Identifier: MIT

#include "many-widgets.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-check-box.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

namespace {

QString caption(int index)
{
    return QStringLiteral("Button %1").arg(index);
}

QWidget *kovaButton(int index)
{
    return new KovaButton(caption(index), KovaButton::Apply);
}

QWidget *plainPushButton(int index)
{
    static const QString sheet = getStyleSheet("component.apply_button", false);
    auto *button = new QPushButton;
    button->setText(caption(index));
    button->setFlat(true);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button->setStyleSheet(sheet);
    return button;
}

QWidget *kovaIconButton(int)
{
    return new KovaIconButton(QStringLiteral("bt_next"));
}

// Takes the size of its picture when it is shown, as the house's button does.
class PlainToolButton : public QToolButton
{
public:
    explicit PlainToolButton(const QPixmap &picture)
        : m_size(picture.size())
    {
        setIcon(QIcon(picture));
    }

protected:
    void showEvent(QShowEvent *event) override
    {
        setIconSize(m_size);
        QToolButton::showEvent(event);
    }

private:
    const QSize m_size;
};

QWidget *plainToolButton(int)
{
    static const QString sheet = getStyleSheet("component.icon_button", false);
    static const QPixmap picture = getGlobalImage("bt_next", ImageManager::Default);
    auto *button = new PlainToolButton(picture);
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button->setStyleSheet(sheet);
    button->setPopupMode(QToolButton::InstantPopup);
    return button;
}

QWidget *kovaCheckBox(int index)
{
    return new KovaCheckBox(caption(index));
}

QWidget *plainCheckBox(int index)
{
    static const QString sheet = getStyleSheet("component.checkbox", false);
    auto *box = new QCheckBox(caption(index));
    box->setStyleSheet(sheet);
    return box;
}

void buttons(Bench &bench)
{
    const auto both = [&bench](const BenchRow &time, const BenchRow &memory, const MakeWidget &ours,
                               const MakeWidget &plain) {
        bench.compare(time, buildAndShowTime(ours), buildAndShowTime(plain));
        bench.compare(memory, bytesPerWidget(ours), bytesPerWidget(plain));
    };
    both({"buttons/push", "ms", 1.05}, {"buttons/push-memory", "bytes", 1.05}, kovaButton,
         plainPushButton);
    both({"buttons/icon", "ms", 1.05}, {"buttons/icon-memory", "bytes", 1.05}, kovaIconButton,
         plainToolButton);
    both({"buttons/check", "ms", 1.05}, {"buttons/check-memory", "bytes", 1.05}, kovaCheckBox,
         plainCheckBox);
}

const BenchTopic topic(buttons);

} // namespace
