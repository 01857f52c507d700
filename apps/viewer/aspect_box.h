// Aspect box: a place for a widget that is to have the proportions of what it shows.
#pragma once

#include <QWidget>

namespace nodeline::app {

// Lays its one child out along its top, as large as fits.
class AspectBox : public QWidget {
public:
    // Takes the child over.
    explicit AspectBox(QWidget* child, QWidget* parent = nullptr);

    // Width to height; held between limits at which the child can still be used.
    void setAspect(double aspect);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    QWidget* child_;
    double aspect_ = 1.5;
};

}  // namespace nodeline::app
