"""What the desktop's settings tell its programs, as a settings service does."""

import signal
import subprocess

from . import process


class DesktopSettings:
    """A service of one display. Programs learn of each change while they run."""

    def __init__(self, display, folder, **settings):
        """The settings are named after the programs' own, such as `animations=False`."""
        self._file = folder / "desktop-settings"
        self._write(settings)
        self._service = process.spawn(["xsettingsd", "-c", str(self._file)],
                                      env=display.environment() | {"PATH": "/usr/bin:/bin"},
                                      stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL)

    def change(self, **settings):
        self._write(settings)
        self._service.send_signal(signal.SIGHUP)

    def stop(self):
        process.stop(self._service)

    def _write(self, settings):
        names = {"animations": "Gtk/EnableAnimations", "caret_blinks": "Net/CursorBlink"}
        self._file.write_text("".join(f"{names[name]} {int(value)}\n"
                                      for name, value in settings.items()))
