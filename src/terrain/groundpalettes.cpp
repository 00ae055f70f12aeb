#include "terrain/groundpalettes.h"

namespace {

using Stop = PaletteStop;

constexpr Stop AlpineGround[] = {
    {0.00f, {164, 190, 106}}, {0.12f, {146, 178, 92}},  {0.24f, {100, 142, 74}},
    {0.42f, {104, 142, 78}},  {0.53f, {166, 174, 108}}, {0.63f, {190, 184, 146}},
    {0.72f, {206, 202, 194}}, {0.79f, {240, 243, 247}}, {1.00f, {255, 255, 255}}};
constexpr Stop AlpineRock[] = {
    {0.00f, {168, 158, 128}}, {0.45f, {170, 160, 142}}, {1.00f, {176, 174, 178}}};

constexpr Stop TemperateGround[] = {{0.00f, {178, 202, 110}}, {0.12f, {200, 210, 126}},
                                    {0.25f, {148, 182, 92}},  {0.42f, {98, 146, 76}},
                                    {0.60f, {114, 154, 84}},  {0.74f, {170, 180, 110}},
                                    {0.87f, {206, 196, 146}}, {1.00f, {226, 214, 190}}};
constexpr Stop TemperateRock[] = {
    {0.00f, {176, 162, 126}}, {0.50f, {182, 168, 142}}, {1.00f, {194, 186, 172}}};

constexpr Stop DesertGround[] = {{0.00f, {248, 226, 178}}, {0.22f, {242, 206, 150}},
                                 {0.42f, {230, 178, 120}}, {0.58f, {216, 152, 98}},
                                 {0.74f, {206, 138, 90}},  {0.88f, {224, 178, 134}},
                                 {1.00f, {242, 214, 178}}};
constexpr Stop DesertRock[] = {
    {0.00f, {212, 158, 106}}, {0.50f, {188, 122, 78}}, {1.00f, {174, 118, 90}}};

constexpr Stop ArcticGround[] = {{0.00f, {188, 194, 160}}, {0.08f, {204, 206, 184}},
                                 {0.18f, {222, 230, 232}}, {0.32f, {240, 246, 251}},
                                 {0.70f, {249, 252, 255}}, {1.00f, {255, 255, 255}}};
constexpr Stop ArcticRock[] = {
    {0.00f, {150, 148, 142}}, {0.50f, {144, 152, 162}}, {1.00f, {164, 174, 188}}};

constexpr Stop AutumnGround[] = {{0.00f, {206, 200, 110}}, {0.12f, {228, 198, 98}},
                                 {0.26f, {240, 174, 70}},  {0.40f, {228, 130, 58}},
                                 {0.54f, {196, 104, 60}},  {0.68f, {176, 138, 86}},
                                 {0.84f, {210, 188, 144}}, {1.00f, {232, 222, 204}}};
constexpr Stop AutumnRock[] = {
    {0.00f, {174, 150, 116}}, {0.50f, {176, 160, 140}}, {1.00f, {192, 184, 176}}};

constexpr Stop VolcanicGround[] = {{0.00f, {126, 148, 86}}, {0.16f, {120, 126, 94}},
                                   {0.36f, {108, 100, 94}}, {0.58f, {112, 94, 86}},
                                   {0.74f, {144, 98, 78}},  {0.87f, {184, 106, 70}},
                                   {0.95f, {220, 150, 94}}, {1.00f, {234, 194, 140}}};
constexpr Stop VolcanicRock[] = {
    {0.00f, {98, 92, 90}}, {0.55f, {92, 82, 82}}, {1.00f, {126, 90, 80}}};

constexpr Stop AtlasGround[] = {{0.00f, {156, 204, 136}}, {0.10f, {184, 218, 148}},
                                {0.22f, {218, 230, 164}}, {0.34f, {246, 238, 178}},
                                {0.48f, {240, 214, 150}}, {0.62f, {226, 184, 118}},
                                {0.76f, {202, 152, 96}},  {0.88f, {190, 152, 120}},
                                {0.96f, {226, 214, 204}}, {1.00f, {250, 248, 246}}};

constexpr Stop GreyGround[] = {{0.00f, {164, 164, 164}}, {1.00f, {250, 250, 250}}};
constexpr Stop GreyRock[] = {{0.00f, {136, 136, 136}}, {1.00f, {208, 208, 208}}};

constexpr float Never = 1e30f; // a slope that no ground has
// In the hue of the background of a scenery, so that what is
// not known looks as if nothing were there.
constexpr std::array<int, 3> Nothing = {160, 208, 255};
constexpr std::array<int, 3> GreyNothing = {232, 232, 232};

// Of natural ground: half by height, half by how much ground lies lower.
constexpr float Shared = 0.5f;

using Rgb = std::array<float, 3>;

constexpr GroundPalette Palettes[] = {
    {"alpine", AlpineGround, AlpineRock, 0.62f, 1.15f, 0.12f, 0.13f, true,
     Rgb{132, 190, 206}, Rgb{28, 78, 130}, Nothing, Shared},
    {"temperate", TemperateGround, TemperateRock, 0.62f, 1.15f, 0.12f, 0.13f, true,
     Rgb{128, 190, 210}, Rgb{30, 84, 138}, Nothing, Shared},
    {"desert", DesertGround, DesertRock, 0.42f, 0.95f, 0.10f, 0.08f, false,
     Rgb{126, 192, 200}, Rgb{36, 98, 140}, Nothing, Shared},
    {"arctic", ArcticGround, ArcticRock, 0.58f, 0.95f, 0.09f, 0.05f, true,
     Rgb{140, 184, 206}, Rgb{22, 66, 110}, Nothing, Shared},
    {"autumn", AutumnGround, AutumnRock, 0.62f, 1.15f, 0.14f, 0.16f, true,
     Rgb{122, 172, 190}, Rgb{32, 78, 118}, Nothing, Shared},
    {"volcanic", VolcanicGround, VolcanicRock, 0.50f, 1.00f, 0.11f, 0.13f, true,
     Rgb{92, 154, 172}, Rgb{20, 56, 96}, Nothing, Shared},
    {"atlas", AtlasGround, AtlasGround, Never, 2.0f * Never, 0.0f, 0.0f, true,
     Rgb{196, 228, 242}, Rgb{76, 142, 200}, Nothing, 0.0f},
    {"grey", GreyGround, GreyRock, 0.55f, 1.20f, 0.0f, 0.03f, false, Rgb{186, 186, 186},
     Rgb{104, 104, 104}, GreyNothing, 0.0f},
};

} // namespace

const GroundPalette *groundPalette(const QString &name)
{
    for (const GroundPalette &palette : Palettes)
        if (name == QLatin1String(palette.name))
            return &palette;
    return nullptr;
}

QStringList groundPaletteNames()
{
    QStringList names;
    for (const GroundPalette &palette : Palettes)
        names.append(QLatin1String(palette.name));
    return names;
}
