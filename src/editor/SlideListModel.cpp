#include "SlideListModel.h"

#include "slideshow/SlideShow.h"

namespace kavori {

int SlideListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(CurrentShow().slides.size());
}

QVariant SlideListModel::data(const QModelIndex& index, int role) const
{
    const auto& slides = CurrentShow().slides;
    if (!index.isValid() || index.row() >= slides.size())
        return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return slides.at(index.row()).SlideFile;
    return {};
}

void SlideListModel::reload()
{
    beginResetModel();
    endResetModel();
}

} // namespace kavori
