#!/usr/bin/env python3
"""Packs an application directory into a zip package, as applications are
delivered: package-app.py SOURCE_DIR ROOT_NAME OUTPUT.zip stores every file of
SOURCE_DIR under ROOT_NAME/ in sorted order."""
import os
import sys
import zipfile


def main():
    source, root, output = sys.argv[1:4]
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED) as package:
        for directory, subdirectories, files in os.walk(source):
            subdirectories.sort()
            for name in sorted(files):
                path = os.path.join(directory, name)
                package.write(path, os.path.join(root, os.path.relpath(path, source)))


if __name__ == "__main__":
    main()
