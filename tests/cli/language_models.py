"""What tests have in common in which a server is asked by the command, and by the desktop program where there is one."""

from chat_server import ChatServer
from quillo_command import CommandTest


class LanguageModelTest(CommandTest):
    """A test with a server of its own, which has these models. Nobody has chosen one yet."""

    models = ("first", "second")

    def setUp(self):
        super().setUp()
        self.server = ChatServer(models=self.models)
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        del self.quillo.environment["QUILLO_LANGUAGE_MODEL"]

    def choose(self, *words):
        return self.done("model", "use", *words).lines
