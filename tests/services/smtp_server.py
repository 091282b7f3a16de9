"""A mail server for tests: prints its port, then each message that it accepts. Ends with its input."""

import asyncio
import sys

from aiosmtpd.smtp import SMTP


class Printer:
    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith("nobody@"):
            return "550 no such user"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        print("from", envelope.mail_from, "to", *envelope.rcpt_tos)
        print(envelope.content.decode("ascii"))
        print("end of message", flush=True)
        return "250 OK"


async def serve():
    loop = asyncio.get_running_loop()
    server = await loop.create_server(lambda: SMTP(Printer()), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1], flush=True)
    await loop.run_in_executor(None, sys.stdin.read)
    server.close()


asyncio.run(serve())
