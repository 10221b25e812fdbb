// Fields beside each other, in as many lines as they need.
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace tallyroom::host {

// Each item is as wide as it would like to be; what is hidden takes no room.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    // Takes the widget's children in their order, each label beside its buddy.
    explicit FlowLayout(QWidget* parent);

    void addItem(QLayoutItem* item) override; // owned from then on
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect& room) override;

private:
    // Returns the height that it takes.
    int place(const QRect& room, bool isMeant) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace tallyroom::host
