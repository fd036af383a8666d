"""A disk that is soon full."""

import ctypes
import os
import subprocess
import unittest

CLONE_NEW_MOUNTS = 0x20000

needs_small_disk = unittest.skipIf(os.geteuid() != 0, "only root can mount a small disk")


def mount_small_disk(test, folder):
    """Makes the folder a disk of its own that only this process sees, and that goes with the test."""
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.unshare(CLONE_NEW_MOUNTS) != 0:
        test.skipTest("mounts cannot be private here")
    folder.mkdir()
    for arguments in (["--make-rprivate", "/"], ["-t", "tmpfs", "-o", "size=400k", "quillo", folder]):
        if subprocess.run(["mount", *arguments], stderr=subprocess.DEVNULL).returncode != 0:
            test.skipTest("nothing can be mounted here")
    test.addCleanup(subprocess.run, ["umount", folder], check=True)


def fill(filler, room):
    """Fills the disk of that file with it, but for about that many bytes."""
    filler.unlink(missing_ok=True)
    free = os.statvfs(filler.parent)
    with open(filler, "wb", buffering=0) as file:
        file.write(b"x" * max(0, free.f_bavail * free.f_bsize - room))
