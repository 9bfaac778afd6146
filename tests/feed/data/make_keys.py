"""Makes the other files of this folder: what a NATS server and a terminal have where keys stand for passwords.

    python3 tests/feed/data/make_keys.py

The keys are of fixed seeds and of no use but here. Needs the module cryptography.
"""

import base64
import json
from pathlib import Path

from cryptography.hazmat.primitives.asymmetric.ed25519 import Ed25519PrivateKey
from cryptography.hazmat.primitives.serialization import Encoding, PublicFormat

HERE = Path(__file__).resolve().parent
PREFIXES = {"operator": 14 << 3, "account": 0, "user": 20 << 3}
SEED_PREFIX = 18 << 3


def checked(content):
    """In base32, with the CRC-16 of XMODEM behind it."""
    crc = 0
    for byte in content:
        crc ^= byte << 8
        for _ in range(8):
            crc = (crc << 1 ^ 0x1021 if crc & 0x8000 else crc << 1) & 0xFFFF
    return base64.b32encode(content + crc.to_bytes(2, "little")).decode().rstrip("=")


class Key:
    def __init__(self, kind, number):
        self.kind, self.raw = kind, bytes([number] * 32)
        self.private = Ed25519PrivateKey.from_private_bytes(self.raw)
        self.public = checked(bytes([PREFIXES[kind]]) + self.private.public_key().public_bytes(Encoding.Raw, PublicFormat.Raw))

    def seed(self):
        prefix = PREFIXES[self.kind]
        return checked(bytes([SEED_PREFIX | prefix >> 5, (prefix & 31) << 3]) + self.raw)


def encoded(content):
    return base64.urlsafe_b64encode(content).decode().rstrip("=")


def token(issuer, subject, name, claims):
    """What an issuer says of a subject, signed."""
    body = {"jti": name, "iat": 1763654400, "iss": issuer.public, "name": name, "sub": subject.public,
            "nats": {**claims, "type": subject.kind, "version": 2}}
    text = ".".join(encoded(json.dumps(part, separators=(",", ":")).encode())
                    for part in ({"typ": "JWT", "alg": "ed25519-nkey"}, body))
    return f"{text}.{encoded(issuer.private.sign(text.encode()))}"


def account_claims(storage):
    return {"limits": {"subs": -1, "data": -1, "payload": -1, "imports": -1, "exports": -1, "wildcards": True, "conn": -1, "leaf": -1,
                       "mem_storage": storage, "disk_storage": storage, "streams": storage, "consumer": storage},
            "default_permissions": {"pub": {}, "sub": {}}}


def main():
    operator, system, market = Key("operator", 1), Key("account", 2), Key("account", 3)
    terminal, other = Key("user", 4), Key("user", 5)
    preload = {system.public: token(operator, system, "system", account_claims(0)),
               market.public: token(operator, market, "market", account_claims(-1))}
    (HERE / "operator.conf").write_text(
        f"operator: {token(operator, operator, 'exchange', {})}\nsystem_account: {system.public}\nresolver: MEMORY\nresolver_preload: {{\n"
        + "".join(f"  {key}: {value}\n" for key, value in preload.items()) + "}\n")
    user = token(market, terminal, "terminal", {"pub": {}, "sub": {}, "subs": -1, "data": -1, "payload": -1})
    for name, key in (("user", terminal), ("stranger", other)):
        (HERE / f"{name}.creds").write_text(
            f"-----BEGIN NATS USER JWT-----\n{user}\n------END NATS USER JWT------\n\n"
            f"-----BEGIN USER NKEY SEED-----\n{key.seed()}\n------END USER NKEY SEED------\n")
    (HERE / "nkey.conf").write_text(f"authorization {{ users: [ {{ nkey: {terminal.public} }} ] }}\n")
    (HERE / "user.nkey").write_text(f"nkey={terminal.public}\nseed={terminal.seed()}\n")
    (HERE / "stranger.nkey").write_text(f"nkey={terminal.public}\nseed={other.seed()}\n")


if __name__ == "__main__":
    main()
