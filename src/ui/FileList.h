#pragma once

#include <QListWidget>

namespace Quorlin {

/// The visible list of documents.
class FileList : public QListWidget
{
    Q_OBJECT

public:
    explicit FileList(QWidget *parent = nullptr);

    /// Leaves so many pixels above the lower edge free of entries.
    void setBottomRoom(int pixels);
};

} // namespace Quorlin
