#include "terraindialogs/texturepanel.h"

#include <QDir>
#include <QFileDialog>

#include <algorithm>
#include <array>

namespace {

// In the order of the entries; the one behind them takes a file.
constexpr std::array Palettes = {"alpine", "temperate", "desert", "arctic",
                                 "autumn", "volcanic",  "atlas",  "grey"};

} // namespace

void alignLabels(const QWidget *window)
{
    const auto labels = window->findChildren<QLabel *>();
    int widest = 0;
    for (const QLabel *const label : labels)
        widest = label->buddy() ? std::max(widest, label->sizeHint().width()) : widest;
    for (QLabel *const label : labels)
        if (label->buddy())
            label->setMinimumWidth(widest);
}

TexturePanel::TexturePanel(QWidget *parent) : QWidget(parent)
{
    setupUi(this);
    const TextureRequest defaults;
    doubleSpinBoxSunAzimuth->setValue(defaults.sunAzimuth);
    doubleSpinBoxSunHeight->setValue(defaults.sunHeight);
    connect(comboBoxPalette, &QComboBox::currentIndexChanged, this,
            &TexturePanel::enableFields);
    connect(comboBoxShade, &QComboBox::currentIndexChanged, this,
            &TexturePanel::enableFields);
    connect(pushButtonBrowsePaletteFile, &QPushButton::clicked, this, [this] {
        const QString name = QFileDialog::getOpenFileName(
            this, tr("Open File"), lineEditPaletteFile->text(),
            tr("Colours (*.cpt *.txt *.clr);;All Files (*)"));
        if (!name.isEmpty())
            lineEditPaletteFile->setText(QDir::toNativeSeparators(name));
    });
    enableFields();
}

void TexturePanel::enableFields()
{
    const bool takesFile =
        m_usesPalette && comboBoxPalette->currentIndex() == int(Palettes.size());
    comboBoxPalette->setEnabled(m_usesPalette);
    lineEditPaletteFile->setEnabled(takesFile);
    pushButtonBrowsePaletteFile->setEnabled(takesFile);
    const bool hasSun = comboBoxShade->currentIndex() != int(BakedLight::None);
    doubleSpinBoxSunAzimuth->setEnabled(hasSun);
    doubleSpinBoxSunHeight->setEnabled(hasSun);
}

void TexturePanel::setPaletteUsed(bool used)
{
    m_usesPalette = used;
    enableFields();
}

void TexturePanel::setLight(BakedLight light)
{
    comboBoxShade->setCurrentIndex(int(light));
}

QString TexturePanel::missing() const
{
    const bool takesFile = lineEditPaletteFile->isEnabled();
    return takesFile && lineEditPaletteFile->text().trimmed().isEmpty()
               ? tr("The file of colours is not named.")
               : QString();
}

TextureRequest TexturePanel::request() const
{
    TextureRequest texture;
    const int palette = comboBoxPalette->currentIndex();
    texture.palette =
        palette < int(Palettes.size())
            ? QString::fromLatin1(Palettes[std::size_t(palette)])
            : QDir::fromNativeSeparators(lineEditPaletteFile->text().trimmed());
    texture.light = BakedLight(comboBoxShade->currentIndex());
    texture.sunAzimuth = doubleSpinBoxSunAzimuth->value();
    texture.sunHeight = doubleSpinBoxSunHeight->value();
    return texture;
}
