#!/usr/bin/env python3
"""Plants violations into a small project and sees that check_arrows.py and CMake find them.

usage: test_check_arrows.py --cmake PATH [unittest argument...]
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import unittest

from check_arrows import differences

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]

PROJECT = {
    "CMakeLists.txt": f"""
        cmake_minimum_required(VERSION 3.25)
        project(small LANGUAGES CXX)
        list(APPEND CMAKE_MODULE_PATH "{REPOSITORY / 'cmake'}" "{REPOSITORY / 'tests/architecture'}")
        add_library(quillo_flags INTERFACE)
        include(QuilloModules)
        include(ExportArrows)
        add_subdirectory(src)
        quillo_export_arrows("${{PROJECT_SOURCE_DIR}}/src" "${{PROJECT_BINARY_DIR}}/arrows.txt")
        """,
    "docs/architecture.md": "# Small\n\n```arrows\nbase\nunicode -> base\nstore -> unicode\napp -> store\n```\n",
    "src/CMakeLists.txt": "add_subdirectory(base)\nadd_subdirectory(unicode)\nadd_subdirectory(store)\n"
                          "add_subdirectory(app)\n",
    "src/base/CMakeLists.txt": "quillo_core_module(base)\n",
    "src/base/Version.h.in": "",
    "src/unicode/CMakeLists.txt": "quillo_core_module(unicode DEPENDS base)\n",
    "src/unicode/Text.cpp": '#include "unicode/Text.h"\n#include <unicode/ustring.h>\n#include <string>\n',
    "src/unicode/Text.h": '#include "base/Version.h"\n',
    "src/store/CMakeLists.txt": "quillo_core_module(store DEPENDS unicode)\n",
    "src/store/Store.h": "",
    "src/store/inner/Store.cpp": '#include "store/Store.h"\n#include "base/Version.h"\n#include "unicode/Text.h"\n',
    "src/app/CMakeLists.txt": "add_executable(program main.cpp)\n"
                              "target_link_libraries(program PRIVATE $<BUILD_INTERFACE:quillo_store>)\n",
    "src/app/main.cpp": '#include "store/Store.h"\n#include <QString>\n',
}

ARROWS = "base core\nunicode core base\nstore core unicode\napp other store\n"


class CheckArrowsTest(unittest.TestCase):
    cmake = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillo-arrows-")
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name, text in PROJECT.items():
            self.write(name, text)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def append(self, name, text):
        self.write(name, (self.root / name).read_text() + text)

    def draw(self, old, new):
        self.write("docs/architecture.md", PROJECT["docs/architecture.md"].replace(old, new))

    def assert_found(self, *expected, arrows=ARROWS):
        self.assertEqual(differences(self.root, arrows), list(expected))

    def configure(self):
        return subprocess.run([self.cmake, "-S", self.root, "-B", self.root / "build"], capture_output=True, text=True,
                              timeout=60)

    # The chart against CMake.

    def test_nothing_is_found_where_all_agree(self):
        self.assert_found()

    def test_arrow_that_only_the_chart_has(self):
        self.draw("store -> unicode", "store -> base, unicode")
        self.assert_found("docs/architecture.md: the chart has store -> base, but src/store/CMakeLists.txt does not")

    def test_arrow_that_only_cmake_has(self):
        self.assert_found("src/app/CMakeLists.txt: app -> unicode is not in the chart",
                          arrows=ARROWS + "app other unicode\n")

    def test_folder_that_the_chart_lacks(self):
        self.write("src/extra/Extra.h", "")
        self.assert_found("docs/architecture.md: src/extra is not in the chart")

    def test_module_without_a_folder(self):
        self.draw("app -> store", "app -> store\nextra")
        self.assert_found("docs/architecture.md: the chart has extra, but there is no src/extra")

    def test_unreadable_charts(self):
        self.draw("app -> store", "app -> store\napp -> base\nbase <- app")
        self.assert_found("docs/architecture.md: app has two lines",
                          'docs/architecture.md: cannot read the line "base <- app"')
        self.draw("```arrows", "```")
        self.assert_found("docs/architecture.md: there are 0 blocks that begin with ```arrows, not one")

    # The chart against the files.

    def test_include_against_the_arrows(self):
        self.write("src/base/Clock.cpp", '#include "base/Version.h"\n#  include <store/Store.h>\n')
        self.assert_found('src/base/Clock.cpp:2: "store/Store.h" is out of reach: no arrows lead from base to store')

    def test_icu_outside_its_module(self):
        self.write("src/store/Words.h", "#include <unicode/ustring.h>\n")
        self.write("src/store/Words.cpp", '#include "unicode/ucal.h"\n')
        self.assert_found("src/store/Words.cpp:1: <unicode/ucal.h> belongs to ICU, which only src/unicode may use",
                          "src/store/Words.h:1: <unicode/ustring.h> belongs to ICU, which only src/unicode may use")

    def test_qt_in_a_core_module(self):
        for number, header in enumerate(("QString", "QtCore/QString", "qstring.h")):
            self.write(f"src/store/{number}.h", f"#include <{header}>\n")
        self.assert_found("src/store/0.h:1: <QString> belongs to Qt, which a core module may not use",
                          "src/store/1.h:1: <QtCore/QString> belongs to Qt, which a core module may not use",
                          "src/store/2.h:1: <qstring.h> belongs to Qt, which a core module may not use")

    def test_a_generated_file_in_a_core_module(self):
        self.append("src/store/inner/Store.cpp", '#include "moc_Store.cpp"\n')
        self.assert_found('src/store/inner/Store.cpp:4: "moc_Store.cpp" is no file below src/')

    def test_include_without_its_folder(self):
        self.append("src/store/inner/Store.cpp", '#include "Store.h"\n')
        self.assert_found('src/store/inner/Store.cpp:4: "Store.h" is no file below src/')

    # What CMake tells, and what it refuses.

    def test_cmake_tells_its_arrows(self):
        configured = self.configure()
        self.assertEqual(configured.returncode, 0, configured.stderr)
        self.assertEqual((self.root / "build/arrows.txt").read_text(), ARROWS)
        # However hidden: a second link line, private, in an expression.
        self.append("src/store/CMakeLists.txt", "target_link_libraries(quillo_store PRIVATE $<1:quillo_base>)\n")
        self.configure()
        self.assert_found("src/store/CMakeLists.txt: store -> base is not in the chart",
                          arrows=(self.root / "build/arrows.txt").read_text())

    def test_cmake_refuses_qt_in_a_core_module(self):
        self.write("src/store/CMakeLists.txt", "quillo_core_module(store DEPENDS unicode LIBRARIES Qt6::Core)\n")
        configured = self.configure()
        self.assertNotEqual(configured.returncode, 0)
        self.assertIn("src/store is a core module and may not use Qt6::Core", configured.stderr)

    def test_cmake_refuses_a_core_module_above_another(self):
        self.append("src/CMakeLists.txt", "add_subdirectory(late)\n")
        self.write("src/late/CMakeLists.txt", "add_library(quillo_desktop INTERFACE)\n"
                                              "quillo_core_module(late DEPENDS desktop)\n")
        configured = self.configure()
        self.assertNotEqual(configured.returncode, 0)
        self.assertIn("may not depend on src/desktop, which is none", " ".join(configured.stderr.split()))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cmake", required=True)
    arguments, others = parser.parse_known_args()
    CheckArrowsTest.cmake = arguments.cmake
    unittest.main(argv=[sys.argv[0], *others])


if __name__ == "__main__":
    main()
