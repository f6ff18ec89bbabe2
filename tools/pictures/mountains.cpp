// A river comes down from rocky mountains in the first light: woods, fields, a village.
#include "mountains.h"

#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 900;
constexpr Vec Sun{1105, 318};

// --- the sky ---

Rgb Sky(Vec p) {
    const double low = p.y / Valley.horizon, d = Length(p - Sun);
    Rgb c = Ramp({Hex(0x29407f), Hex(0x5a66ac), Hex(0xa57fb4), Hex(0xe9a09c), Hex(0xfbc78a), Hex(0xffe6ae)}, low);
    c = Mix(c, Hex(0xc07fae), 0.35 * Smooth(500, 1400, std::abs(p.x - Sun.x)) * Smooth(0.4, 1, low));
    const double ray = Noise(std::atan2(p.y - Sun.y, p.x - Sun.x) * 9, 3, 17);
    c = c + Hex(0xffc888) * (0.16 * Smooth(-0.1, 0.5, ray) * std::exp(-d / 420));
    // Wisps, and below them banks of cloud, flatter towards the horizon, on fire where they look at the sun.
    const double v = 900 / (Valley.horizon + 95 - p.y), u = (p.x - Sun.x) * (v + 0.8) / 600;
    const double wisp = Smooth(-0.05, 0.5, Fbm(u * 1.5 + 9, v * 4 + 0.9 * u, 6, 45));
    c = Mix(c, Mix(Hex(0x9c86cc), Hex(0xffd4b4), low), 0.5 * wisp * Smooth(1, 0.6, low));
    const Vec q{u + 0.35 * Fbm(u * 0.8, v * 0.8, 3, 51), v * 1.25};
    const double body = Fbm(q.x, q.y, 7, 41) + 0.16 * Fbm(u * 5, v * 5, 3, 43);
    const double toSun = Fbm(q.x - 0.05 * u, q.y + 0.11, 7, 41) + 0.16 * Fbm(u * 5, v * 5 + 0.3, 3, 43);
    const double cloud = Smooth(-0.12, 0.22, body), lit = Clamp01(0.35 + 2.1 * (body - toSun));
    const Rgb shade = Mix(Hex(0x5c5a9a), Hex(0xb0708f), low), fire = Mix(Hex(0xf7a9a0), Hex(0xffe0a0), low);
    c = Mix(c, Mix(shade, fire, Clamp01(lit + 0.5 * std::exp(-d / 260))), 0.88 * cloud * Smooth(1.1, 0.75, low));
    return Mix(c + Hex(0xffb060) * (0.5 * std::exp(-d / 120)), Hex(0xfff6cc), Smooth(46, 42, d));
}

// --- the land ---

struct Peak {
    double across, z, height, reach;  // across: the column where it stands
};
constexpr Peak Peaks[] = {{30, 8600, 1500, 2000},   {185, 7600, 1250, 1500},   {345, 8000, 2010, 2200},
                          {505, 7400, 1180, 1100},  {622, 8400, 1720, 1500},   {770, 9200, 1350, 1700},
                          {900, 10500, 1250, 1700}, {1010, 12500, 1000, 1900}, {1190, 12500, 1050, 1900},
                          {1310, 9800, 1330, 1500}, {1440, 8600, 1480, 1800},  {1590, 7800, 1700, 1800}};

double Massif(double x, double z, int octaves) {
    const double wx = x + 300 * Fbm(x / 1100, z / 1100, 3, 31), wz = z + 300 * Fbm(x / 1100 + 7, z / 1100, 3, 32);
    double h = 0;
    for (const Peak& p : Peaks) {
        const double d = Length({wx - (p.across - Width / 2) / Valley.focal * p.z, wz - p.z}) / p.reach;
        if (d < 1) h = std::max(h, p.height * (1 - d) * (0.72 + 0.28 * (1 - d)));
    }
    return h + (Ridge(x / 1250, z / 1250, octaves - 1, 40) - 0.66) * 1350 * Smooth(20, 700, h);
}

// What grows at a place: how high and of what colour.
struct Plant {
    double top = 0;
    Rgb colour;
    bool any = false;
};

Rgb Leaves(double x, double z, uint32_t id) {
    const double kind = IdHash(id, 5);
    if (kind < 0.026) return Hex(0xf2c230);
    if (kind < 0.036) return Hex(0xd873b4);
    if (kind < 0.046) return Hex(0x9a74cc);
    return Ramp({Hex(0x1f4a3a), Hex(0x2f6236), Hex(0x4f7e38), Hex(0x86a044)},
                0.1 + 0.75 * IdHash(id, 4) + 0.5 * Fbm(x / 330, z / 330, 3, 23));
}

// The wood, crown by crown; lower at its edge.
Plant Wood(double x, double z, double edge) {
    const Cell c = Cells(x / 13, z / 13, 3, 0.9);
    const double across = std::min(1.0, c.nearest * 1.4), leaves = z < 2600 ? 1.8 * Fbm(x / 2.6, z / 2.6, 2, 12) : 0;
    const double tall = (7 + 8 * IdHash(c.id, 1)) * Mix(0.55, 1, Smooth(0, 8, edge));
    return {tall * std::pow(1 - across * across, 0.75) + leaves, Leaves(x, z, c.id), true};
}

// Fields of many crops between hedges.
Plant Field(double x, double z) {
    const double u = x / 105 + 0.3 * Noise(x / 160, z / 160, 14), v = z / 150 + 0.3 * Noise(x / 160, z / 160, 15);
    const Cell cell = Cells(u, v, 21, 0.8);
    const double hedge = cell.second - cell.nearest;
    if (hedge < 0.075) {
        const Cell bush = Cells(x / 6, z / 6, 24, 0.9);
        return {std::max(0.0, 3.5 + 2.5 * IdHash(bush.id, 1) - 5 * bush.nearest), Leaves(x, z, bush.id), true};
    }
    static const std::vector<Rgb> crops = {Hex(0x84a84a), Hex(0xc2b45c), Hex(0x6a9846), Hex(0xcfa656), Hex(0x9db85e),
                                           Hex(0x94704e), Hex(0x78a256), Hex(0xa98ab4), Hex(0xd2c67e)};
    const Vec row = Turned({x, z}, Pi * IdHash(cell.id, 2));
    const double furrow = 0.5 + 0.5 * std::sin(row.x * Mix(0.55, 1.0, IdHash(cell.id, 3)));
    const double clod = Smooth(3000, 1000, z) * Fbm(x / 5, z / 5, 2, 16);
    const Rgb crop = crops[size_t(IdHash(cell.id, 1) * 8.99)];
    return {1.3 * furrow * (0.8 + 0.6 * clod), crop * (0.86 + 0.2 * furrow + 0.2 * clod), true};
}

Plant PlantAt(double x, double z, double ground) {
    if (z > 5600 || ground > 420 + 300 * Noise(x / 240, z / 240, 25) || RiverSide(x, z) < 6 || RoadSide(x, z) < 0)
        return {};
    const double edge = ground - 9 - 5 * Noise(x / 90, z / 90, 8);
    return edge > 0 ? Wood(x, z, edge) : Field(x, z);
}

double Surface(double x, double z) {
    const double ground = ValleyGround(x, z, 6);
    return ground + PlantAt(x, z, ground).top;
}

Rgb Material(Spot s, double ground, double steep) {
    const Plant plant = PlantAt(s.x, s.z, ground);
    if (plant.any) return plant.colour * (1 + 0.35 * Smooth(2300, 1000, s.z) * Fbm(s.x / 2.4, s.z / 2.4, 2, 13));
    if (RiverSide(s.x, s.z) < 6 || s.z < 4000) return Hex(0xdcc8a0) * (1 + 0.2 * Fbm(s.x / 4, s.z / 4, 3, 18));
    const Rgb rock = Ramp({Hex(0x66565c), Hex(0x8c7670), Hex(0xb09a8c), Hex(0xc8b4a2)},
                          0.5 + 0.65 * Fbm(s.x / 150, s.h / 90 + s.x / 400, 5, 9));
    const double wooded =
        Smooth(1.25, 0.8, steep * 0.7 + Smooth(200, 1500, ground) + 0.55 * Fbm(s.x / 170, s.z / 170, 4, 77));
    return Mix(rock, Hex(0x3f6a40) * (1 + 0.5 * Noise(s.x / 26, s.z / 26, 19)), wooded);
}

// How much of the low sun, from the right and a little from this side, comes to a spot.
constexpr double LightX = 0.78, LightH = 0.36, LightZ = -0.5;
double Sunshine(Spot s) {
    double open = 1;
    for (int i = 1; i < 13 && open > 0; ++i) {
        const double far = 14.0 * i + 10.0 * i * i;
        const double over = s.h + 5 + far * LightH - ValleyGround(s.x + far * LightX, s.z + far * LightZ, 4);
        open = std::min(open, Clamp01(0.5 + over / (8 + far * 0.08)));
    }
    return open;
}

// The river has the sky and the mountains in it.
Rgb Water(Spot s, const Canvas& backdrop) {
    const Vec at = Valley.OnCanvas(backdrop, s);
    const double wave = Noise(s.x / 14, s.z / 9, 60) + 0.5 * Noise(s.x / 4, s.z / 3, 61);
    const double near = Smooth(3000, 600, s.z);
    const Rgb mirrored = backdrop.Sample(at.x + 5 * wave * near, 2 * Valley.horizon - at.y + (4 + 14 * near) * wave);
    return Mix(mirrored * Hex(0xd4dcec), Hex(0xfff0cc), 0.5 * Smooth(0.45, 0.8, wave) * near);
}

Rgb Lit(Spot s) {
    const double e = std::max(1.2, s.z * 0.0009);
    const double hx = (Surface(s.x + e, s.z) - Surface(s.x - e, s.z)) / (2 * e);
    const double hz = (Surface(s.x, s.z + e) - Surface(s.x, s.z - e)) / (2 * e);
    const double steep = std::hypot(hx, hz), up = 1 / std::hypot(steep, 1);
    const double sun = Clamp01((-hx * LightX + LightH - hz * LightZ) * up) * Sunshine(s);
    return Material(s, ValleyGround(s.x, s.z, 6), steep) *
           (Hex(0x566ab4) * (0.55 + 0.45 * up) + Rgb{1.5, 1.08, 0.7} * sun);
}

// Mist lies in the low places, the farther the more; the air does the rest.
Rgb Shade(Spot s, const Canvas& backdrop) {
    const Rgb c = RiverSide(s.x, s.z) < 0 ? Water(s, backdrop) : Lit(s);
    const Rgb air = Mix(Hex(0x9096cc), Hex(0xffcf9c), Smooth(-0.5, 0.28, s.x / s.z));
    const double bank = 180 + 200 * Fbm(s.x / 700, s.z / 900, 4, 71);
    const double torn = Clamp01(0.7 + 1.3 * Fbm(s.x / 300, s.z / 380, 4, 72));
    const double mist = Smooth(bank, bank * 0.2, s.h) * Smooth(1300, 3600, s.z) * torn;
    return Mix(Mix(c, Mix(air, Hex(0xffeedd), 0.55), 0.9 * mist), air, 1 - std::exp(-s.z / (8000 + 13 * s.h)));
}

}  // namespace

double RiverX(double z) { return 130 + 300 * std::sin(z / 430 + 0.6) * Smooth(300, 1500, z) + 0.07 * z; }

double RiverSide(double x, double z) {
    const double source = Smooth(4600, 5600, z);  // at the foot of the mountains
    return std::abs(x - RiverX(z)) - 46 - 9 * Noise(x / 60, z / 60, 4) + 300 * source;
}

double RoadSide(double x, double z) {
    static const std::vector<Vec> stops = {
        {-420, 620}, {-330, 900}, {-240, 1180}, {-40, 1190}, {RiverX(BridgeZ), BridgeZ},
        {360, 1180}, {480, 1500}, {560, 2000},  {760, 2600}};
    static const std::vector<Vec> road = Curve(stops, 8, false);
    return Polyline({x, z}, road, 5);
}

double ValleyGround(double x, double z, int octaves) {
    const double side = RiverSide(x, z);
    if (side < 0) return 0;
    const double swell = Smooth(-0.45, 0.6, Fbm(x / 760 + 3, z / 520, octaves - 1, 5));
    const double room = Mix(60, 310, Smooth(2700, 900, z)) + (x > RiverX(z) ? 150 : 60) * Smooth(2600, 1400, z);
    const double hills = Smooth(room, room + 1000, side) * (20 + (200 + 0.03 * z) * swell) * Smooth(500, 2000, z);
    double h = 1 + 5 * Smooth(0, 60, side) + hills;
    if (z > 3800) h = std::max(h, Massif(x, z, octaves));
    return h;
}

Canvas Mountains() {
    Canvas canvas(Width, Height);
    canvas.Each(Sky);
    Eye far = Valley, near = Valley;
    far.nearest = near.farthest = 4300;
    for (const Eye& part : {far, near}) {
        const Canvas backdrop = canvas;
        DrawTerrain(canvas, part, 0.0016, Surface, [&](Spot s) { return Shade(s, backdrop); });
    }
    DrawValleyLife(canvas);
    DrawBirds(canvas);
    DrawKnoll(canvas);
    canvas.Finish(0.2, 0.006, 8);
    return canvas;
}

}  // namespace pictures
