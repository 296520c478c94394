#!/usr/bin/env python3
"""Finds C++ files that no CMakeLists.txt builds: a test that is not built never fails."""
import project


def built_files(top, folder):
    """Every word of the CMake lists reachable from `folder`, as the path of the file it would name."""
    cmake_file = folder / "CMakeLists.txt"
    if not cmake_file.exists():
        return set()
    found = set()
    for _, name, words in project.commands(cmake_file):
        if name == "add_subdirectory":
            found |= built_files(top, folder / words[0])
        else:
            found |= {(folder / word.replace("${CMAKE_SOURCE_DIR}", str(top))).resolve() for word in words}
    return found


def nearest_list(top, file):
    return next(folder / "CMakeLists.txt" for folder in file.parents if (top / folder / "CMakeLists.txt").exists())


def main():
    top = project.root()
    built = built_files(top, top)
    project.finish([
        (file, 1, f"is not built: name it in {nearest_list(top, file)}, and see that add_subdirectory leads there")
        for file in project.files(top)
        if file.suffix == ".cpp" and file.parts[0] in ("src", "tests", "bench", "fuzz")
        and top / file not in built
    ])


if __name__ == "__main__":
    main()
