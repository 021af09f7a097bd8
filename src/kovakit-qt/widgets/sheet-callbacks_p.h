// SPDX-License-Identifier: MIT

#pragma once

#include "kovakit-qt/modality/sheet-modality_p.h"

#include <kovakit-qt/widgets/kova-mask.h>

#include <QLayout>

// What the modal run of a KovaMessageSheet or KovaInputSheet asks of it.
template<class Sheet>
[[nodiscard]] SheetModality::Callbacks modalityCallbacks(Sheet *sheet)
{
    return {[sheet] { sheet->quit(); }, [sheet](int result) { Q_EMIT sheet->finished(result); },
            [sheet] { return sheet->isOnHeap(); }};
}

// What the mask that holds @p sheet keeps free around it, in device pixels.
[[nodiscard]] inline QMargins marginsOfMask(const QWidget *sheet)
{
    const auto *mask = qobject_cast<const KovaMask *>(sheet->parentWidget());
    return mask && mask->layout() ? mask->layout()->contentsMargins() : QMargins();
}
