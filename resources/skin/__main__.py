"""Renders the skin's images, draws them on a sheet, or compares them with the committed ones. See script/images."""
import argparse
import filecmp
import pathlib
import sys
import tempfile

from skin import background, controls, cursors, labels, meters, numbers, sheet

IMAGES = 84


def render():
    """All images by name."""
    images = {}
    for module in (background, controls, labels, meters, numbers):
        images.update(module.images())
    assert len(images) == IMAGES, f"the editor uses {IMAGES} images, but {len(images)} were rendered"
    return dict(sorted(images.items()))


def write(folder, images):
    folder.mkdir(parents=True, exist_ok=True)
    for name, image in images.items():
        image.write(folder / f"{name}.png")


def cursor_folder(images):
    return images.parent / "cursors"


def write_cursors(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name, cursor in cursors.cursors().items():
        (folder / f"{name}.cur").write_bytes(cursor)


def check(folder, images):
    """Yields a message for each outdated image or cursor and each low contrast."""
    with tempfile.TemporaryDirectory() as fresh:
        write(pathlib.Path(fresh), images)
        for name in sorted({path.name for path in [*pathlib.Path(fresh).iterdir(), *folder.glob("*.png")]}):
            old, new = folder / name, pathlib.Path(fresh) / name
            if not old.exists() or not new.exists() or not filecmp.cmp(old, new, shallow=False):
                yield f"{old} differs from a fresh rendering"
    for name, cursor in cursors.cursors().items():
        old = cursor_folder(folder) / f"{name}.cur"
        if not old.exists() or old.read_bytes() != cursor:
            yield f"{old} differs from a fresh rendering"
    for pair, ratio, least in sheet.legibility(images["Background"]):
        if ratio < least:
            yield f"{pair}: the contrast is {ratio:.1f}, but must be at least {least}"


def main():
    parser = argparse.ArgumentParser(prog="script/images", description="Renders the editor's images and cursor.")
    parser.add_argument("--check", action="store_true", help="only compare the committed files with a fresh rendering")
    parser.add_argument("--sheet", metavar="DIR", type=pathlib.Path,
                        help="only draw a sheet of all images, and the editor in three states, into DIR")
    parser.add_argument("folder", type=pathlib.Path, help=argparse.SUPPRESS)
    options = parser.parse_args()
    images = render()
    if options.check:
        faults = list(check(options.folder, images))
        for fault in faults:
            print(f"images: {fault}", file=sys.stderr)
        if faults:
            sys.exit("images: to render them again, run: script/images")
        print(f"{len(images)} images and the cursor are up to date; all contrasts are sufficient")
    elif options.sheet:
        options.sheet.mkdir(parents=True, exist_ok=True)
        sheet.contact_sheet(images).write(options.sheet / "images.png")
        for state in sheet.STATES:
            picture = sheet.mock(images, state)
            picture.write(options.sheet / f"editor-{state}.png")
            sheet.enlarged(picture, 3).write(options.sheet / f"editor-{state}-300.png")
        print(f"wrote the sheet and the pictures of the editor to {options.sheet}")
    else:
        write(options.folder, images)
        write_cursors(cursor_folder(options.folder))
        print(f"wrote {len(images)} images to {options.folder} and the cursor to {cursor_folder(options.folder)}")


main()
