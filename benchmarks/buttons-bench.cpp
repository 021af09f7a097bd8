#include "bench.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-check-box.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QGridLayout>
#include <QWidget>

#include <memory>

namespace {

constexpr int widgetCount = 200;
constexpr int columns = 10;

using Make = std::function<QWidget *(int)>;

QString caption(int index)
{
    return QStringLiteral("Button %1").arg(index);
}

// A window full of the widgets that @p make makes, which the window's layout takes over.
std::unique_ptr<QWidget> fullWindow(const Make &make)
{
    auto window = std::make_unique<QWidget>();
    auto *grid = new QGridLayout(window.get());
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    for (int i = 0; i < widgetCount; ++i)
        grid->addWidget(make(i), i / columns, i % columns);
    showAndWaitForPaint(window.get());
    return window;
}

Bench::Side buildAndShowTime(const Make &make)
{
    return [make] {
        const Stopwatch watch;
        const auto window = fullWindow(make);
        return watch.milliseconds();
    };
}

Bench::Side bytesPerWidget(const Make &make)
{
    return [make] {
        const double before = heapBytes();
        const auto window = fullWindow(make);
        return (heapBytes() - before) / widgetCount;
    };
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
    const auto both = [&bench](const BenchRow &time, const BenchRow &memory, const Make &ours,
                               const Make &plain) {
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
