#include "kova-paging-model.h"

#include <limits>

KovaPagingModel::KovaPagingModel(int rowLimit, QObject *parent)
    : QObject(parent)
    , m_rowLimit(rowLimit)
{
}

KovaPagingModel::~KovaPagingModel() = default;

int KovaPagingModel::pageCount() const
{
    if (m_rowLimit <= 0)
        return 1;
    const int fullPages = m_itemCount / m_rowLimit;
    const bool hasRest = m_itemCount % m_rowLimit != 0;
    return qMax(1, fullPages + (hasRest ? 1 : 0));
}

int KovaPagingModel::startItem() const
{
    if (m_rowLimit <= 0)
        return 0;
    const qint64 start = (qint64(m_nowPage) - 1) * m_rowLimit;
    return int(qBound(qint64(0), start, qint64(std::numeric_limits<int>::max())));
}
