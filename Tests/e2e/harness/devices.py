"""A camera and a microphone that the web engine makes up, for programs under test."""

from .authority import library

# Stands in the program before the engine, and makes all settings of pages with such devices.
LIBRARY = "liborvu-test-devices.so"


def added_to(environment):
    """An environment in which a program has these devices too."""
    preloaded = [LIBRARY] + environment.get("LD_PRELOAD", "").split()
    return environment | {"LD_LIBRARY_PATH": str(library(LIBRARY)),
                          "LD_PRELOAD": " ".join(preloaded)}
