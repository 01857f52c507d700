// Message bar: a line above the picture with what went wrong, until it is closed.
#pragma once

#include <QFrame>

class QLabel;

namespace nodeline::app {

// One message at a time: the latest.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    explicit MessageBar(QWidget* parent = nullptr);

    void tell(const QString& message);
    [[nodiscard]] QString text() const;

private:
    QLabel* label_;
};

}  // namespace nodeline::app
