// What lies below a window's menu bar: background colour, backdrop, presses on the form itself.
#pragma once
#include <QRegion>
#include <QWidget>

class Form;

class ClientArea : public QWidget {
public:
    ClientArea(Form& form, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    Form& form_;
};

// The shape of a form that has one.
QRegion ShapeOf(const Form& form);
