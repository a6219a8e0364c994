"""Small made-up source folders, and what the check of the floors says about each."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
import check_layers


def faults(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        return check_layers.check(Path(folder))


class Layers(unittest.TestCase):
    def test_what_is_allowed(self):
        self.assertEqual([], faults({
            "platform/error.h": "#include <QString>\n",
            "charts/chart_types.h": '#include "platform/error.h"\n',
            "timekeeping/day.cpp": '#include "timekeeping/day.h"\n#include "charts/chart_types.h"\n',
            "timekeeping/day.h": '#include "platform/error.h"\n#include <QStringView>\n',
            "timekeeping/frmSTM.cpp": '#include "timekeeping/day.h"\n#include <QWidget>\n',
            "app/main.cpp": '#include "timekeeping/frmSTM.h"\n#include <QtWidgets/QLabel>\n',
            "timekeeping/frmSTM.h": "",
        }))

    def test_each_rule_catches_its_fault(self):
        for files, part in (
            ({"platform/a.cpp": '#include "frame/b.h"\n', "frame/b.h": ""}, "lies above it"),
            ({"charts/a.h": "", "timekeeping/a.cpp": '#include "charts/a.h"\n'}, "lies above it"),
            ({"tray/a.cpp": '#include "tray/frmInfo.h"\n', "tray/frmInfo.h": ""}, "lies above it"),
            ({"tray/a.cpp": '#  include "tray/gone.h"\n'}, "doesn't have"),
            ({"elsewhere/a.h": ""}, "no floor"),
            ({"tray/a.h": "#include <QMessageBox>\n"}, "core knows no windows"),
            ({"tray/a.h": "#include <QtPrintSupport/QPrinter>\n"}, "core knows no windows"),
            ({"tray/a.cpp": "QApplication::beep();\n"}, "core knows no windows"),
            ({"tray/a.h": '#include "tray/b.h"\n', "tray/b.h": '#include "tray/a.h"\n'},
             "files in a circle: tray/a.h, tray/b.h"),
            ({"charts/a.h": '#include "options/a.h"\n', "options/a.h": "",
              "options/b.h": '#include "charts/b.h"\n', "charts/b.h": ""}, "folders in a circle"),
        ):
            with self.subTest(files=files):
                found = faults(files)
                self.assertEqual(1, len(found), found)
                self.assertIn(part, found[0])


if __name__ == "__main__":
    unittest.main()
