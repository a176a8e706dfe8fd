#pragma once

#include <QAbstractListModel>

namespace kavori {

// The View List: one row per slide of the show in memory, showing its file. Rows are made on
// demand, so a show of 30,000 slides costs no widgets.
class SlideListModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // The show changed under the list.
    void reload();
    // Rows show the bare file names instead of the paths (the tip keeps the path).
    void setNamesOnly(bool namesOnly);
    bool namesOnly() const { return m_namesOnly; }

private:
    bool m_namesOnly = false;
};

} // namespace kavori
