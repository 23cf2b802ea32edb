"""Which documents are measured, and the private copies that both sides are given."""

import os
import shutil
from dataclasses import dataclass
from pathlib import Path

OFFICE = frozenset(
    """doc docx docm dot dotx dotm rtf odt ott fodt txt html htm xhtml wpd wps abw pages sxw stw
       xls xlsx xlsm xlsb xlt xltx xltm ods ots fods csv sxc stc dif slk dbf
       ppt pptx pptm pps ppsx ppsm pot potx potm odp otp fodp sxi sti
       odg otg fodg png jpg jpeg gif bmp tif tiff svg wmf emf""".split()
)
PDF = frozenset(["pdf"])


class UsageError(Exception):
    """The command was used wrongly; the text says how."""


@dataclass(frozen=True)
class Document:
    """One document: its private copy, and its name in tables (folder/…/name)."""

    label: str
    staged: Path

    @property
    def is_pdf(self):
        return extension(self.staged) in PDF

    def output_in(self, folder):
        """Where a result is kept: unlike the bare name, `a.docx.pdf` is never taken twice."""
        return Path(folder) / (self.label + ".pdf")


def extension(path):
    return Path(path).suffix[1:].lower()


def stage(arguments, folder, extensions):
    """Copies the documents of the folders and files given into `folder`; returns them sorted.

    The other files of a folder are linked beside the copies, since a document may show them.
    """
    folder = Path(folder)
    documents = []
    for argument in arguments:
        source = Path(argument)
        if source.is_dir():
            documents += _stage_folder(source.resolve(), folder, extensions)
        elif source.is_file():
            documents.append(_stage_file(source.resolve(), folder))
        else:
            raise UsageError(f"no such file or folder: {argument}")
    if not documents:
        raise UsageError("no documents found")
    return sorted(documents, key=lambda document: document.label)


def _stage_folder(source, stage_folder, extensions):
    root = _free_folder(stage_folder, source.name or "root")
    documents = []
    for current, folders, files in os.walk(source):
        folders[:] = [name for name in folders if not name.startswith(".")]
        target = root / Path(current).relative_to(source)
        target.mkdir(parents=True, exist_ok=True)
        for name in files:
            original = Path(current) / name
            if not original.is_file() or name.startswith("."):
                continue
            if extension(name) in extensions:
                documents.append(_copy(original, target / name, stage_folder))
            else:
                (target / name).symlink_to(original)
    return documents


def _stage_file(source, stage_folder):
    return _copy(source, _free_folder(stage_folder, source.parent.name or "root") / source.name, stage_folder)


def _copy(original, target, stage_folder):
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(original, target)
    return Document(str(target.relative_to(stage_folder)), target)


def _free_folder(stage_folder, name):
    candidate, number = stage_folder / name, 2
    while candidate.exists():
        candidate, number = stage_folder / f"{name}~{number}", number + 1
    return candidate


def waves(documents):
    """Groups of documents in which no two would be written as the same `name.pdf`."""
    groups = []
    for document in documents:
        stem = document.staged.stem
        for names, members in groups:
            if stem not in names:
                names.add(stem)
                members.append(document)
                break
        else:
            groups.append(({stem}, [document]))
    return [members for _, members in groups]
