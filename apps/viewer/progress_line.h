// Progress line: tells of work that takes long, and lets a person give it up.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

class QLabel;

namespace nodeline::app {

// Appears half a second after the work has begun, so short work goes by unseen.
class ProgressLine : public QWidget {
    Q_OBJECT

public:
    explicit ProgressLine(QWidget* parent = nullptr);

    // `phase` says what the work is at; it is asked again and again until `stop`.
    void start(std::function<QString()> phase);
    void stop();

Q_SIGNALS:
    void cancelled();

private:
    void show_phase();

    QLabel* label_;
    std::function<QString()> phase_;
    QTimer delay_;
    QTimer refresh_;
};

}  // namespace nodeline::app
