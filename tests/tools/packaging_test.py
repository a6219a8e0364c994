"""What is installed: the files, the names by which they refer to each other, and their removal.

    packaging_test.py SOURCE BUILD
"""
import configparser
import gzip
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

SOURCE, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def png_size(path):
    head = path.read_bytes()[:24]
    assert head[:8] == b"\x89PNG\r\n\x1a\n", path
    return struct.unpack(">II", head[16:24])


def entry(path):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(path)
    return parser["Desktop Entry"]


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


class Packaging(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        self.prefix = self.folder / "root/opt/a program"
        self.install("install", BUILD, "/opt/a program")

    def install(self, *arguments):
        subprocess.run([SOURCE / "tools/install.sh", *arguments], check=True, capture_output=True,
                       env={**os.environ, "DESTDIR": str(self.folder / "root"),
                            "INSTALL_RECORD": str(self.folder / "record")})

    def share(self, name):
        return self.prefix / "share" / name

    def test_every_place_names_the_same_version(self):
        said = subprocess.run([self.prefix / "bin/kelvrane", "--version"], check=True,
                              capture_output=True, text=True).stdout
        version = said.removeprefix("Kelvrane ").strip()
        changelog = gzip.open(self.share("doc/kelvrane/changelog.gz"), "rt").readline()
        self.assertEqual(re.match(r"kelvrane \((.*?)\)", changelog)[1], version)
        metainfo = xml.parse(self.share("metainfo/kelvrane.metainfo.xml"))
        self.assertEqual(metainfo.find("releases/release").get("version"), version)
        page = gzip.open(self.share("man/man1/kelvrane.1.gz"), "rt").readline()
        self.assertIn(f'"Kelvrane {version}"', page)

    def test_the_desktop_finds_program_icons_and_file_type(self):
        desktop = entry(self.share("applications/kelvrane.desktop"))
        program, operand = desktop["Exec"].split()
        self.assertTrue(os.access(self.prefix / "bin" / program, os.X_OK))
        self.assertEqual(operand, "%f")
        kind = xml.parse(self.share("mime/packages/kelvrane.xml")).find("{*}mime-type")
        self.assertEqual(kind.get("type") + ";", desktop["MimeType"])
        self.assertEqual([glob.get("pattern") for glob in kind.findall("{*}glob")], ["*.col"])
        for context, name in (("apps", desktop["Icon"]), ("mimetypes", kind.find("{*}icon").get("name"))):
            for size in SIZES:
                icon = self.share(f"icons/hicolor/{size}x{size}/{context}/{name}.png")
                self.assertEqual(png_size(icon), (size, size))
            xml.parse(self.share(f"icons/hicolor/scalable/{context}/{name}.svg"))

    def test_it_starts_with_the_session_only_when_asked_to(self):
        found = [name for name in files_below(self.folder / "root") if "autostart" in name]
        self.assertEqual(found, ["opt/a program/share/kelvrane/autostart/kelvrane.desktop"])
        started = entry(self.folder / "root" / found[0])
        self.assertEqual((started["Exec"], started["TryExec"]), ("kelvrane", "kelvrane"))

    @unittest.skipUnless(shutil.which("desktop-file-validate"), "desktop-file-utils isn't there")
    def test_the_entries_are_valid(self):
        for name in ("applications/kelvrane.desktop", "kelvrane/autostart/kelvrane.desktop"):
            checked = subprocess.run(["desktop-file-validate", self.share(name)],
                                     capture_output=True, text=True)
            self.assertEqual((checked.returncode, checked.stdout), (0, ""))

    @unittest.skipUnless(shutil.which("man"), "man-db isn't there")
    def test_the_manual_page_has_no_mistakes(self):
        said = subprocess.run(["man", "--warnings", "-l", "-Tutf8", SOURCE / "resources/linux/kelvrane.1"],
                              capture_output=True, text=True, env={**os.environ, "MANPAGER": "cat"})
        self.assertEqual(said.stderr, "")
        for word in ("KELVRANE_HOME", "ForceUpdate", "Fileinfo.dat"):
            self.assertIn(word, re.sub(".\b", "", said.stdout))  # bold is struck over

    def test_what_the_program_looks_up_lies_where_it_looks(self):
        for file in ("share/kelvrane/Kelvrane.qch", "libexec/kelvrane/kelvrane-transfer",
                     "libexec/kelvrane/kelvrane-sound.so"):
            self.assertTrue((self.prefix / file).exists(), file)

    def test_uninstalling_takes_its_own_files_alone(self):
        neighbour = self.share("kelvrane/templates/of the administrator.htm")
        neighbour.parent.mkdir()
        neighbour.touch()
        self.install("uninstall", BUILD)
        self.assertEqual(files_below(self.prefix), {"share/kelvrane/templates/of the administrator.htm"})
        self.assertFalse(self.share("doc/kelvrane").exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
