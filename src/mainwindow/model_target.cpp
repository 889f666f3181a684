#include "mainwindow/model_target.h"

namespace lumidot {

void ModelTarget::setSysExOutText(const std::string& text) {
    model_.writePane(QString::fromStdString(text));
}

void ModelTarget::setLcdText(const std::string& text) {
    model_.setLcdText(QString::fromStdString(text));
}

std::string ModelTarget::lcdText() const {
    return model_.lcdText().toStdString();
}

std::string DescribeInto(WindowModel& model, const std::string& hexText) {
    ModelTarget target(model);
    return DescribeSysEx(hexText, target, model.codePage());
}

}  // namespace lumidot
