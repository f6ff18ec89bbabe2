// Draws the sample pictures: make_pictures lists them, make_pictures NAME FILE.ppm draws one.
#include <cstdio>
#include <cstring>

#include "pictures/pictures.h"

namespace {

struct Picture {
    const char* name;
    paint::Canvas (*draw)();
};

constexpr Picture Pictures[] = {
    {"Aquário", pictures::Aquarium},
    {"Azulejos", pictures::Tiles},
    {"Balões sobre os campos", pictures::Balloons},
    {"Casario na encosta", pictures::HillsideHouses},
    {"Cidade ao entardecer", pictures::CityAtDusk},
    {"Colcha de retalhos", pictures::Quilt},
    {"Conchas na areia", pictures::Shells},
    {"Folhas de outono", pictures::AutumnLeaves},
    {"Jardim em flor", pictures::Garden},
    {"Mapa das ilhas", pictures::OldMap},
    {"Noite estrelada", pictures::StarrySky},
    {"Serra ao amanhecer", pictures::Mountains},
    {"Tucano em mosaico", pictures::Toucan},
    {"Vitral", pictures::StainedGlass},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Picture& picture : Pictures) {
        if (argc == 1) std::printf("%s\n", picture.name);
        if (argc == 3 && std::strcmp(argv[1], picture.name) == 0) return picture.draw().WritePpm(argv[2]) ? 0 : 1;
    }
    return argc == 1 ? 0 : 2;
}
