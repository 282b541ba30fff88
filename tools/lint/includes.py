"""What the project's sources include."""

import os
import re
import subprocess

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+([<"])([^>"]+)[>"]', re.MULTILINE)


def project_files(*patterns):
    """The files that git knows or would take up, as paths from the clone's root, in order."""
    listed = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", *patterns],
        check=True, capture_output=True, text=True).stdout.splitlines()
    return sorted({path for path in listed if os.path.isfile(path)})


class Includes:
    """Looks includes up as the compiler does: beside the file, then in the folders given."""

    def __init__(self):
        self._read = {}

    def of(self, path):
        """The includes of a file as (line, quote, name), those of every branch of a condition."""
        if path not in self._read:
            with open(path, encoding="utf-8") as file:
                text = file.read()
            self._read[path] = [(text.count("\n", 0, found.start()) + 1, found[1], found[2])
                                for found in INCLUDE.finditer(text)]
        return self._read[path]

    @staticmethod
    def find(name, includer, folders):
        """The file that a name in double quotes means; None when it is none of ours, or made of its includer by the build."""
        for folder in (os.path.dirname(includer), *folders):
            path = os.path.normpath(os.path.join(folder, name))
            if os.path.isfile(path):
                return None if path.endswith(".moc") else path
        return None

    def closure(self, path, folders):
        """The file, and every file that it includes in double quotes, however indirectly; sorted."""
        found, open_ends = {path}, [path]
        while open_ends:
            includer = open_ends.pop()
            for _, quote, name in self.of(includer):
                included = self.find(name, includer, folders) if quote == '"' else None
                if included and included not in found:
                    found.add(included)
                    open_ends.append(included)
        return sorted(found)
