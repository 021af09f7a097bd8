// SPDX-License-Identifier: MIT

#include "kova-paging-model.h"

#include <limits>

class KovaPagingModel::Private
{
public:
    int rowLimit = 0;
    int itemCount = 0;
    int nowPage = 1;
};

KovaPagingModel::KovaPagingModel(int rowLimit, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->rowLimit = rowLimit;
}

KovaPagingModel::~KovaPagingModel() = default;

int KovaPagingModel::rowLimit() const
{
    return d->rowLimit;
}

void KovaPagingModel::setRowLimit(int rowLimit)
{
    d->rowLimit = rowLimit;
}

int KovaPagingModel::itemCount() const
{
    return d->itemCount;
}

void KovaPagingModel::setItemCount(int itemCount)
{
    d->itemCount = itemCount;
}

int KovaPagingModel::nowPage() const
{
    return d->nowPage;
}

void KovaPagingModel::setNowPage(int page)
{
    d->nowPage = page;
}

int KovaPagingModel::pageCount() const
{
    if (d->rowLimit <= 0)
        return 1;
    const int fullPages = d->itemCount / d->rowLimit;
    const bool hasRest = d->itemCount % d->rowLimit != 0;
    return qMax(1, fullPages + (hasRest ? 1 : 0));
}

int KovaPagingModel::startItem() const
{
    if (d->rowLimit <= 0)
        return 0;
    const qint64 start = (qint64(d->nowPage) - 1) * d->rowLimit;
    return int(qBound(qint64(0), start, qint64(std::numeric_limits<int>::max())));
}
