"""A small made-up help, and what the check says when something in it is wrong."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
import check_help

FUNCTIONS = "Spread_Sheet_Screen/Formula_Functions.htm"
VARIABLES = "Spread_Sheet_Screen/Template_Variables.htm"
CONTENTS = "".join(f'<section title="t" ref="{name}"/>' for name in ("a.htm", FUNCTIONS, VARIABLES))
WHOLE = {
    "help/a.htm": '<link rel="stylesheet" href="style.css"><a name="top"></a>'
    f'<a href="{FUNCTIONS}#sums">sums</a><img src="p.png"><a href="https://example.com">out</a>',
    f"help/{FUNCTIONS}": '<a name="sums"></a><tt>SUM</tt><a href="../a.htm#top">up</a>',
    f"help/{VARIABLES}": "<tt>#NAME#</tt>",
    "help/p.png": "",
    "help/style.css": "",
    "help/kelvrane.qhp": f'<p><toc>{CONTENTS}</toc><keyword name="k" ref="a.htm#top"/></p>',
    "src/frame/help_topics.cpp": '{0, 0, "a.htm"},',
    "src/worksheet/formula_functions.cpp": 'row("SUM", 1, 2),',
    "src/timesheets/template_variables.cpp": '{"#NAME#"}',
}


def faults(name="", before="", after=""):
    """Of the whole help, with one text in one of its files changed."""
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder).resolve()
        for file, text in WHOLE.items():
            (root / file).parent.mkdir(parents=True, exist_ok=True)
            assert file != name or before in text
            (root / file).write_text(text.replace(before, after) if file == name else text)
        return list(check_help.check(root / "help", root / "src"))


class Help(unittest.TestCase):
    def test_a_whole_help_has_no_fault(self):
        self.assertEqual([], faults())

    def test_each_rule_catches_its_fault(self):
        for name, before, after, part in (
            ("help/a.htm", "#sums", "#gone", "leads nowhere"),
            ("help/a.htm", FUNCTIONS, "gone.htm", "leads nowhere"),
            ("help/a.htm", FUNCTIONS, "../src/a.htm", "leads nowhere"),
            ("help/a.htm", "p.png", "gone.png", "gone.png is missing"),
            ("help/a.htm", "style.css", "gone.css", "gone.css is missing"),
            ("help/a.htm", "<img ", "<script></script><img ", "no scripts"),
            ("help/a.htm", "<img ", '<p style="color: red"><img ', "no colours"),
            ("help/kelvrane.qhp", f'<section title="t" ref="{VARIABLES}"/>', "", "don't name"),
            ("help/kelvrane.qhp", 't" ref="a.htm', 't" ref="gone.htm', "isn't there"),
            ("help/kelvrane.qhp", "#top", "#gone", "keyword k leads nowhere"),
            ("src/frame/help_topics.cpp", "a.htm", "b.htm", "b.htm isn't there"),
            ("src/worksheet/formula_functions.cpp", "SUM", "SUMIF", "SUMIF"),
            ("src/timesheets/template_variables.cpp", "NAME", "DATE", "#DATE#"),
        ):
            with self.subTest(name=name, after=after):
                found = faults(name, before, after)
                self.assertTrue(any(part in fault for fault in found), found)


if __name__ == "__main__":
    unittest.main()
