"""The list is kept in step through a server that does not tell when something happens there."""

import base64
import json
import time
import unittest

from dav_server import DavServer
from desktop_program import wait_until
from quillo_command import stored_task
from quillo_on_desktop import DesktopTest

PLACE = "Quillo.linux.sync.place"
STRANGER = "11111111-2222-4333-8444-555555555555"
SECONDS_BETWEEN_LOOKS = 30


class Shown(DesktopTest):
    def test_it_is_looked_more_often_while_the_list_is_shown(self):
        server = DavServer()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        place = server.place("good")
        place.folders |= {"quillo", "quillo/v1"}
        self.quillo.put(PLACE, "string", f"webdav {server.address('good')}")
        program = self.start()
        popover = program.open_popover()
        time.sleep(2)
        items = json.dumps([stored_task(1, "from elsewhere")]).encode()
        place.store(
            f"quillo/v1/{STRANGER}.json",
            json.dumps({"format": 1, "device": STRANGER, "name": "", "app": "", "stamp": time.time() + 10,
                        "items": base64.b64encode(items).decode()}).encode(),
        )  # fmt: skip
        wait_until(lambda: popover.rows() == ["from elsewhere"], "it is on the screen",
                   SECONDS_BETWEEN_LOOKS + 10)  # fmt: skip

        self.input.key("Escape")
        wait_until(lambda: not program.has_popover(), "the list is closed")
        requests = len(server.events)
        time.sleep(SECONDS_BETWEEN_LOOKS + 5)
        self.assertEqual(len(server.events), requests)


if __name__ == "__main__":
    unittest.main()
