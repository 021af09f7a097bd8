// SPDX-License-Identifier: MIT

#include "kova-button.h"

#include "kovakit-qt/accessibility/button-accessible_p.h"

#include <kovakit-qt/style/style-manager.h>

namespace {

const char *styleKey(int type)
{
    switch (type) {
    case KovaButton::Apply:
        return "component.apply_button";
    case KovaButton::Cancel:
        return "component.cancel_button";
    case KovaButton::SelectedPage:
        return "component.select_paging_button";
    case KovaButton::OtherPage:
        return "component.nonselect_paging_button";
    case KovaButton::Standard:
        return "component.default_button";
    case KovaButton::Red:
        return "component.red_button";
    default:
        return nullptr;
    }
}

} // namespace

KovaButton::KovaButton(const QString &text, int type)
{
    installButtonAccessibility<KovaButton>();
    setText(text);
    setFlat(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (const char *key = styleKey(type))
        setStyleSheet(getStyleSheet(key, false));
}
