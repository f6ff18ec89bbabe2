# Gathers the licences of everything that goes to a player on Windows: licences.py SOURCES FOLDER.
# SOURCES holds the unpacked qt6-base and libsdl2; what the compiler adds is described by its packages.
# A text that is missing or empty ends it: nothing may go out without its licence.
import json
import re
import shutil
import subprocess
import sys
from pathlib import Path
from urllib.parse import quote

Root = Path(__file__).resolve().parents[2]

# Where notices are about files that no build for Windows compiles. A new place is taken in until it is named here.
Elsewhere = {
    "3rdparty/VulkanMemoryAllocator", "3rdparty/android", "3rdparty/forkfd", "3rdparty/gradle", "3rdparty/md4c", "3rdparty/pixman",
    "3rdparty/wasm", "3rdparty/xcb", "corelib/kernel", "gui/vulkan", "plugins/platforms/cocoa",
}
# The licence file of these only names another one.
Behind = {"freetype": "docs/FTL.TXT", "grayraster": "../../3rdparty/freetype/docs/FTL.TXT"}


def text_of(path: Path) -> str:
    text = path.read_text(encoding="utf-8", errors="replace").strip("\n")
    if not text.strip():
        sys.exit(f"{path} is empty")
    return text + "\n"


def notices(qt: Path) -> list[tuple[str, dict, Path]]:
    """What Core, Gui, Widgets and their plugins contain of others: (name, notice, its folder)."""
    found = []
    for path in sorted(qt.glob("src/**/qt_attribution.json")):
        if str(path.parent.relative_to(qt / "src")) in Elsewhere:
            continue
        told = json.loads(path.read_text(encoding="utf-8"), strict=False)
        for notice in told if isinstance(told, list) else [told]:
            if notice["QDocModule"] in ("qtcore", "qtgui", "qtwidgets"):
                found.append((notice["Name"], notice, path.parent))
    return sorted(found, key=lambda entry: entry[0].lower())


def described(name: str, notice: dict, folder: Path) -> str:
    """One notice: heading, holders, licence in full."""
    lines = ["=" * 80, f"{name} {notice.get('Version', '')}".strip(), notice.get("Homepage", ""), notice.get("QtUsage", ""),
             "Licence: " + notice["License"]]
    holders = notice.get("Copyright", "")
    if "CopyrightFile" in notice:
        holders = text_of(folder / notice["CopyrightFile"])
    files = notice.get("LicenseFiles") or ([notice["LicenseFile"]] if notice.get("LicenseFile") else [])
    if notice["Id"] in Behind:
        files = files + [Behind[notice["Id"]]]
    if not files and "public domain" not in notice["License"].lower():
        sys.exit(f"{name} has a licence but no text of it")
    return "\n".join([line for line in lines if line] + ["", holders.strip(), ""] + [text_of(folder / file) for file in files])


def upstream(dsc_version: str) -> str:
    """The maker's own version: 6.4.2 of 6.4.2+dfsg-10."""
    return re.match(r"(?:\d+:)?([\d.]+)", dsc_version).group(1)


def version_in(tree: Path) -> str:
    return re.search(r"\(([^)]*)\)", text_of(tree / "debian/changelog")).group(1)


def package_version(package: str) -> str:
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], check=True, capture_output=True, text=True).stdout


def main(sources: Path, folder: Path) -> None:
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    qt, sdl, documents = sources / "qt6-base", sources / "libsdl2", Path("/usr/share/doc")
    taken = notices(qt)
    texts = {
        "Fento-Lira Master.txt": text_of(Root / "LICENSE"),
        "LGPL-3.txt": text_of(qt / "LICENSES/LGPL-3.0-only.txt"),
        "GPL-3.txt": text_of(qt / "LICENSES/GPL-3.0-only.txt"),
        "Qt - terceiros.txt": "\n".join(described(*notice) for notice in taken),
        "SDL.txt": text_of(sdl / "LICENSE.txt") + "\n" + text_of(sdl / "debian/copyright"),
        "GCC.txt": text_of(documents / "gcc-mingw-w64-base/copyright"),
        "mingw-w64.txt": text_of(documents / "mingw-w64-common/copyright"),
    }
    guide = text_of(Root / "packaging/windows/LICENCAS.txt")
    words = {"gcc-mingw-w64": package_version("gcc-mingw-w64-x86-64-posix-runtime"), "mingw-w64": package_version("mingw-w64-x86-64-dev")}
    for name, tree in (("qt6-base", qt), ("libsdl2", sdl)):
        version = version_in(tree)
        words[name] = upstream(version)
        words["source-" + name] = f"https://snapshot.debian.org/package/{name}/{quote(version)}/"
    texts["LICENCAS.txt"] = re.sub(r"@([\w-]+)@", lambda mark: words[mark.group(1)], guide)
    for name, text in texts.items():
        (folder / name).write_text(text, encoding="utf-8", newline="\r\n")
    recipe = folder / "Receita"
    recipe.mkdir()
    for name in ("packages.sh", "windows/libraries.sh", "windows/toolchain.cmake", "windows/qt6-base.cmake", "windows/libsdl2.cmake"):
        shutil.copyfile(Root / "tools" / name, recipe / Path(name).name)
    print(f"{len(taken)} parts of others in Qt: " + ", ".join(name for name, _, _ in taken))


main(Path(sys.argv[1]), Path(sys.argv[2]))
