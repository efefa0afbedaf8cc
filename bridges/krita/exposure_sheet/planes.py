"""Planes in memory that is shared with the tool, each named by a descriptor."""

import fcntl
import mmap
import os

from .words import Refused

FIXED_SIZE = fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW


class SharedPlane:
    """A piece of memory of a fixed size that a getter lends to the tool, again and again."""

    def __init__(self, size):
        self.size = size
        self.descriptor = os.memfd_create("plane", os.MFD_CLOEXEC | os.MFD_ALLOW_SEALING)
        os.ftruncate(self.descriptor, size)
        fcntl.fcntl(self.descriptor, fcntl.F_ADD_SEALS, FIXED_SIZE | fcntl.F_SEAL_SEAL)
        self._memory = mmap.mmap(self.descriptor, size)

    def write(self, plane):
        self._memory[:] = plane

    def close(self):
        self._memory.close()
        os.close(self.descriptor)


class TakenPlanes:
    """The tool's own pieces of memory: each is mapped when it first comes and kept, since it comes for every frame."""

    MOST = 16

    def __init__(self):
        self._mapped = {}

    def read(self, descriptor, size):
        """The plane of that size, in bytes, that stands at the start of the memory."""
        facts = os.fstat(descriptor)
        key = facts.st_dev, facts.st_ino
        if key not in self._mapped:
            self._check_seals(descriptor)
            if len(self._mapped) == self.MOST:
                self.close()
            self._mapped[key] = mmap.mmap(descriptor, facts.st_size, access=mmap.ACCESS_READ)
        memory = self._mapped[key]
        if len(memory) < size:
            raise Refused(f"the shared memory has {len(memory)} bytes where a plane has {size}")
        return memory[:size]

    @staticmethod
    def _check_seals(descriptor):
        try:
            seals = fcntl.fcntl(descriptor, fcntl.F_GET_SEALS)
        except OSError:
            raise Refused("the descriptor isn't one of shared memory that can be sealed") from None
        # Memory that can shrink would end Krita at the read of a page that has gone.
        if seals & FIXED_SIZE != FIXED_SIZE:
            raise Refused("the shared memory isn't sealed against a change of its size")
        if os.fstat(descriptor).st_size == 0:
            raise Refused("the shared memory is empty")

    def close(self):
        for memory in self._mapped.values():
            memory.close()
        self._mapped.clear()
