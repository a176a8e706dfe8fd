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
    const QString& file = slides.at(index.row()).SlideFile;
    if (role == Qt::DisplayRole && m_namesOnly)
        return file.section(u'/', -1);
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return file;
    return {};
}

void SlideListModel::setNamesOnly(bool namesOnly)
{
    if (namesOnly == m_namesOnly)
        return;
    m_namesOnly = namesOnly;
    reload();
}

void SlideListModel::reload()
{
    beginResetModel();
    endResetModel();
}

} // namespace kavori
