"""A keyring of its own on a private session bus: gnome-keyring-daemon."""

import os
import pathlib
import subprocess

from gi.repository import GLib

from desktop_program import PATIENCE_SECONDS, wait_until

SECRETS = ("org.freedesktop.secrets", "/org/freedesktop/secrets")
SERVICE = (*SECRETS, "org.freedesktop.Secret.Service")
KEYRING_PASSWORD = b"of the keyring"


class Keyring:
    """Open from the start. What it holds stays in `folder`, for another one after it."""

    def __init__(self, bus, folder):
        self.bus = bus
        folder = pathlib.Path(folder)
        runtime = folder / "runtime"
        runtime.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.data = folder / "share"
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(folder),
            "XDG_DATA_HOME": str(self.data),
            "XDG_RUNTIME_DIR": str(runtime),
            "DBUS_SESSION_BUS_ADDRESS": bus.address,
        }
        self.start()

    def start(self):
        self.process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL"]
            + ["gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"],
            env=self.environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        self.process.stdin.write(KEYRING_PASSWORD)
        self.process.stdin.close()
        wait_until(lambda: self.bus.owner(SECRETS[0]) == self.process.pid, "the keyring is there")
        wait_until(self.collection, "the keyring is open")

    def collection(self):
        """The path of the keyring that passwords go to, or None while there is none."""
        path = self.bus.call(*SERVICE, "ReadAlias", GLib.Variant("(s)", ("default",)))[0]
        return None if path == "/" else path

    def lock(self):
        self.bus.call(*SERVICE, "Lock", GLib.Variant("(ao)", ([self.collection()],)))

    def unlock(self):
        """Another one takes its place, to which the user has told the password."""
        self.die()
        self.start()

    def items(self):
        """The label and the attributes of all that it holds."""
        paths = self.bus.call(*SERVICE, "SearchItems", GLib.Variant("(a{ss})", ({},)))
        items = []
        for path in paths[0] + paths[1]:
            get = (SECRETS[0], path, "org.freedesktop.DBus.Properties", "Get")
            label, attributes = (
                self.bus.call(*get, GLib.Variant("(ss)", ("org.freedesktop.Secret.Item", name)))[0]
                for name in ("Label", "Attributes")
            )
            items.append((label, attributes))
        return sorted(items, key=str)

    def die(self):
        self.process.kill()
        self.process.wait(timeout=PATIENCE_SECONDS)
