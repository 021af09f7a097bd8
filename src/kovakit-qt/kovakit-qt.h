// SPDX-License-Identifier: MIT

#pragma once

/**
 * @file
 * Everything that the library offers.
 */

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/kovakit-version.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/accessible-util.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/escape-tooltip.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/kova-locale.h>
#include <kovakit-qt/utils/ui-path-manager.h>
#include <kovakit-qt/utils/util.h>
#include <kovakit-qt/widgets/browser-window.h>
#include <kovakit-qt/widgets/event-filters.h>
#include <kovakit-qt/widgets/file-system-tree-widget-item.h>
#include <kovakit-qt/widgets/help-context.h>
#include <kovakit-qt/widgets/help-window.h>
#include <kovakit-qt/widgets/html-text-browser.h>
#include <kovakit-qt/widgets/image-downloader.h>
#include <kovakit-qt/widgets/item-delegate.h>
#include <kovakit-qt/widgets/kova-button-path.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-calander-view.h>
#include <kovakit-qt/widgets/kova-check-box.h>
#include <kovakit-qt/widgets/kova-combo-box.h>
#include <kovakit-qt/widgets/kova-countdown-msg-box.h>
#include <kovakit-qt/widgets/kova-date-selector.h>
#include <kovakit-qt/widgets/kova-filter-bar.h>
#include <kovakit-qt/widgets/kova-footbar.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-input-sheet.h>
#include <kovakit-qt/widgets/kova-label.h>
#include <kovakit-qt/widgets/kova-line-edit.h>
#include <kovakit-qt/widgets/kova-mask.h>
#include <kovakit-qt/widgets/kova-menu.h>
#include <kovakit-qt/widgets/kova-msg-box.h>
#include <kovakit-qt/widgets/kova-msg-sheet.h>
#include <kovakit-qt/widgets/kova-paging-bar.h>
#include <kovakit-qt/widgets/kova-paging-model.h>
#include <kovakit-qt/widgets/kova-radio-button.h>
#include <kovakit-qt/widgets/kova-sheet.h>
#include <kovakit-qt/widgets/kova-table-columns-info.h>
#include <kovakit-qt/widgets/kova-table-widget.h>
#include <kovakit-qt/widgets/kova-tree-widget.h>
#include <kovakit-qt/widgets/link-label.h>
#include <kovakit-qt/widgets/message-label.h>
#include <kovakit-qt/widgets/resize-signal-table-widget.h>
#include <kovakit-qt/widgets/shapi-linux.h>

// Not there when the library was built without them.
#if __has_include(<kovakit-qt/single-application/qtsingleapplication.h>)
#include <kovakit-qt/single-application/qtlocalpeer.h>
#include <kovakit-qt/single-application/qtlockedfile.h>
#include <kovakit-qt/single-application/qtsingleapplication.h>
#endif
