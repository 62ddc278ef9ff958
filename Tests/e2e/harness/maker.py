"""The tool with which releases are made, as a module."""

import importlib.machinery
import importlib.util
import pathlib

_FILE = pathlib.Path(__file__).resolve().parents[3] / "tools/publish"
_LOADER = importlib.machinery.SourceFileLoader("orvu_publish", str(_FILE))
_SPEC = importlib.util.spec_from_loader("orvu_publish", _LOADER)
publish = importlib.util.module_from_spec(_SPEC)
_LOADER.exec_module(publish)
