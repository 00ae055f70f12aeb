// Moves values between the parameters and the form.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "scene/fieldlimits.h"
#include "scene/keyvalue.h"
#include "ui_scenerymdichildform.h"

#include <algorithm>
#include <span>

namespace {

using Form = Ui_SceneryMdiChildForm;
using Data = SceneryData;

template <class Widget, class Value> struct Binding {
    Widget *Form::*widget;
    Value Data::*field;
};

constexpr Binding<DecimalSpinBox, double> Reals[]{
    {&Form::doubleSpinBoxElevScaleX, &Data::HDateiSkalaX},
    {&Form::doubleSpinBoxElevScaleY, &Data::HDateiSkalaY},
    {&Form::doubleSpinBoxLightX, &Data::LichtX},
    {&Form::doubleSpinBoxLightY, &Data::LichtY},
    {&Form::doubleSpinBoxLightZ, &Data::LichtZ},
    {&Form::doubleSpinBoxCameraFromX, &Data::BeobXA},
    {&Form::doubleSpinBoxCameraToX, &Data::BeobXE},
    {&Form::doubleSpinBoxCameraFromY, &Data::BeobYA},
    {&Form::doubleSpinBoxCameraToY, &Data::BeobYE},
    {&Form::doubleSpinBoxCameraFromZ, &Data::BeobZA},
    {&Form::doubleSpinBoxCameraToZ, &Data::BeobZE},
    {&Form::doubleSpinBoxCameraFromHeading, &Data::RichtungA},
    {&Form::doubleSpinBoxCameraToHeading, &Data::RichtungE},
    {&Form::doubleSpinBoxCameraFromPitch, &Data::NeigungA},
    {&Form::doubleSpinBoxCameraToPitch, &Data::NeigungE},
    {&Form::doubleSpinBoxCameraFromFocalLength, &Data::BrennA},
    {&Form::doubleSpinBoxCameraToFocalLength, &Data::BrennE},
    {&Form::doubleSpinBoxCameraFromRoll, &Data::VerkantenA},
    {&Form::doubleSpinBoxCameraToRoll, &Data::VerkantenE},
    {&Form::doubleSpinBoxCameraFromElevZScale, &Data::HDateiSkalaZA},
    {&Form::doubleSpinBoxCameraToElevZScale, &Data::HDateiSkalaZE},
    {&Form::doubleSpinBoxCameraFromDust, &Data::NebelA},
    {&Form::doubleSpinBoxCameraToDust, &Data::NebelE},
    {&Form::doubleSpinBoxSmoothness, &Data::Traegheit},
};

constexpr Binding<QSpinBox, qint32> Wholes[]{
    {&Form::spinBoxSizeX, &Data::AusBreite},
    {&Form::spinBoxSizeY, &Data::AusHoehe},
    {&Form::spinBoxGridX, &Data::AusAuflX},
    {&Form::spinBoxGridY, &Data::AusAuflY},
    {&Form::spinBoxFrameNumberTotal, &Data::Bildanzahl},
    {&Form::spinBoxFrameNumberOffset, &Data::Offset},
    {&Form::spinBoxFrameNumberFrom, &Data::StartbildNr},
    {&Form::spinBoxFrameNumberTo, &Data::EndbildNr},
};

constexpr Binding<QCheckBox, bool> Flags[]{
    {&Form::checkBoxTGA, &Data::AusgabeTGA},
    {&Form::checkBoxPNG, &Data::AusgabePNG},
    {&Form::checkBoxJPG, &Data::AusgabeJPG},
    {&Form::checkBoxPPM, &Data::AusgabePPM},
    {&Form::checkBoxUseTextureFile, &Data::TDateiVerwenden},
    {&Form::checkBoxBackgroundColor, &Data::HintergrundVerwenden},
    {&Form::checkBoxRecorder, &Data::Recorder},
};

constexpr Binding<QLineEdit, QString> Texts[]{
    {&Form::lineEditOutputFiles, &Data::AusDateiname},
    {&Form::lineEditTextureFile, &Data::TDateiname},
    {&Form::lineEditElevationFile, &Data::HDateiname},
};

// The limits of a field that the form shows.
template <class Limits, class Value>
const Limits &limitsOf(std::span<const Limits> all, Value Data::*field)
{
    return *std::find_if(all.begin(), all.end(),
                         [field](const Limits &limits) { return limits.field == field; });
}

const RealLimits &limitsOf(double Data::*field) { return limitsOf(realLimits(), field); }

// The line edit is a coloured rectangle: its text has the colour of its ground.
void showColour(QLineEdit *edit, QRgb colour)
{
    edit->setText(colourText(colour));
    QPalette palette = edit->palette();
    const QBrush brush{QColor(colour)};
    for (const auto group : {QPalette::Active, QPalette::Disabled, QPalette::Inactive}) {
        palette.setBrush(group, QPalette::Base, brush);
        palette.setBrush(group, QPalette::Text, brush);
    }
    edit->setPalette(palette);
}

QRgb shownColour(const QLineEdit *edit)
{
    const QString text = edit->text();
    const auto byte = [&text](int at) {
        return static_cast<int>(QStringView(text).mid(at, 2).toUInt(nullptr, 16));
    };
    return qRgb(byte(4), byte(2), byte(0));
}

} // namespace

void SceneryDelegate::limitFields()
{
    Form &form = view->form();
    for (const auto &[widget, field] : Reals) {
        const RealLimits &limits = limitsOf(field);
        (form.*widget)->setDecimals(limits.decimals);
        (form.*widget)->setRange(limits.lowest, limits.highest);
    }
    for (const auto &[widget, field] : Wholes) {
        const WholeLimits &limits = limitsOf(wholeLimits(), field);
        (form.*widget)->setRange(limits.lowest, limits.highest);
    }
    for (const auto &[widget, field] : Texts)
        (form.*widget)->setMaxLength(MaxFieldText);
}

void SceneryDelegate::dataToView() { showInForm(scenery.parameters); }

void SceneryDelegate::showInForm(SceneryData &data)
{
    Form &form = view->form();
    for (const auto &[widget, field] : Texts)
        (form.*widget)->setText(data.*field);
    for (const auto &[widget, field] : Flags)
        (form.*widget)->setChecked(data.*field);
    for (const auto &[widget, field] : Wholes)
        (form.*widget)->setValue(data.*field);
    // Before any field changes, which may tell of it.
    for (const RealLimits &limits : realLimits())
        if (limits.isLogarithm)
            data.*limits.field = showableValue(limits, data.*limits.field);
    for (const auto &[widget, field] : Reals)
        (form.*widget)->setValue(fieldValue(limitsOf(field), data.*field));
    const int quality = data.GenauRechnen;
    QRadioButton *const checked = quality == 1   ? form.radioButtonHQ
                                  : quality == 2 ? form.radioButtonXHQ
                                                 : form.radioButtonLQ;
    checked->setChecked(true);
    (data.isStraight ? form.radioButtonStraight : form.radioButtonCurve)
        ->setChecked(true);
    showColour(form.lineEditBackgroundColor, data.Hintergrund);
}

void SceneryDelegate::viewToData() { readForm(scenery.parameters); }

void SceneryDelegate::readForm(SceneryData &data) const
{
    const Form &form = view->form();
    for (const auto &[widget, field] : Texts)
        data.*field = (form.*widget)->text();
    for (const auto &[widget, field] : Flags)
        data.*field = (form.*widget)->isChecked();
    for (const auto &[widget, field] : Wholes)
        data.*field = (form.*widget)->value();
    for (const auto &[widget, field] : Reals)
        data.*field = parameterValue(limitsOf(field), (form.*widget)->value());
    data.GenauRechnen = form.radioButtonLQ->isChecked()   ? 0
                        : form.radioButtonHQ->isChecked() ? 1
                                                          : 2;
    data.isStraight = form.radioButtonStraight->isChecked();
    data.Hintergrund = shownColour(form.lineEditBackgroundColor);
}

SceneryDocument SceneryDelegate::seen() const
{
    SceneryDocument document = scenery;
    readForm(document.parameters);
    return document;
}

void SceneryDelegate::editForm(const std::function<void(SceneryData &)> &edit)
{
    SceneryData data = seen().parameters;
    edit(data);
    showInForm(data);
    setModified();
}

// --- First and last frame ------------------------------------------------------------

namespace {

struct FramePair {
    double Data::*first;
    double Data::*last;
};

constexpr FramePair Pairs[]{
    {&Data::BeobXA, &Data::BeobXE},         {&Data::BeobYA, &Data::BeobYE},
    {&Data::BeobZA, &Data::BeobZE},         {&Data::RichtungA, &Data::RichtungE},
    {&Data::NeigungA, &Data::NeigungE},     {&Data::BrennA, &Data::BrennE},
    {&Data::VerkantenA, &Data::VerkantenE}, {&Data::HDateiSkalaZA, &Data::HDateiSkalaZE},
    {&Data::NebelA, &Data::NebelE},
};

} // namespace

void SceneryDelegate::copyFirstLast()
{
    viewToData();
    for (const FramePair &pair : Pairs)
        scenery.parameters.*pair.last = scenery.parameters.*pair.first;
    dataToView();
}

void SceneryDelegate::copyLastFirst()
{
    viewToData();
    for (const FramePair &pair : Pairs)
        scenery.parameters.*pair.first = scenery.parameters.*pair.last;
    dataToView();
}
