#!/usr/bin/env python3
"""What only a process shows: the terminal, pipes, a full disk, and everything that leaves the command at once.

    ProcessTest.py REDFISHCONFIG
"""

import datetime
import fcntl
import gzip
import json
import os
import pathlib
import pty
import resource
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

DATA = pathlib.Path(__file__).resolve().parent / "data"
BINARY = ""


def environment(**variables):
    kept = {key: value for key, value in os.environ.items()
            if not key.startswith("REDFISHCONFIG_") and key not in ("NO_COLOR", "TERM")}
    return {**kept, "TERM": "xterm", "REDFISHCONFIG_REGISTRY": str(DATA / "small.json"), **variables}


def run(*arguments, **variables):
    return subprocess.run([BINARY, *arguments], env=environment(**variables), capture_output=True, timeout=60,
                          check=False)


def on_terminal(*arguments, columns=80, **variables):
    """What the command writes to a terminal of that width."""
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    process = subprocess.Popen([BINARY, *arguments], env=environment(**variables), stdin=slave, stdout=slave,
                               stderr=subprocess.DEVNULL)
    os.close(slave)
    written = b""
    while True:
        try:
            block = os.read(master, 65536)
        except OSError:  # the terminal's other end is closed
            break
        if not block:
            break
        written += block
    os.close(master)
    process.wait(timeout=60)
    return written.decode().replace("\r\n", "\n")


class Colour(unittest.TestCase):
    def test_on_a_terminal(self):
        self.assertIn("\033[", on_terminal("list"))
        self.assertIn("\033[1mBootMode\033[0m", on_terminal("show", "BootMode"))

    def test_not_under_no_color(self):
        self.assertNotIn("\033", on_terminal("list", NO_COLOR="1"))
        self.assertIn("\033[", on_terminal("list", NO_COLOR=""), "an empty NO_COLOR says nothing")

    def test_not_on_a_terminal_that_knows_none(self):
        self.assertNotIn("\033", on_terminal("list", TERM="dumb"))

    def test_not_in_a_pipe(self):
        self.assertNotIn(b"\033", run("list").stdout)

    def test_not_in_json(self):
        self.assertNotIn("\033", on_terminal("list", "--json"))

    def test_the_texts_are_the_same(self):
        self.assertEqual(on_terminal("list", NO_COLOR="1"), run("list").stdout.decode())


class Width(unittest.TestCase):
    def test_texts_are_wrapped_to_the_terminal(self):
        for columns in (40, 60, 100):
            lines = on_terminal("describe", "BootMode", columns=columns, NO_COLOR="1").splitlines()
            self.assertLessEqual(max(map(len, lines)), columns)
        self.assertGreater(len(on_terminal("describe", "BootMode", columns=40).splitlines()),
                           len(on_terminal("describe", "BootMode", columns=100).splitlines()))

    def test_a_terminal_that_does_not_tell_its_width(self):
        self.assertEqual(on_terminal("describe", "BootMode", columns=0, NO_COLOR="1"),
                         run("describe", "BootMode").stdout.decode())


class Writing(unittest.TestCase):
    def test_a_reader_that_has_seen_enough_is_no_error(self):
        for ignore_signal in (False, True):  # Python itself starts with the signal ignored
            reader, writer = os.pipe()
            os.close(reader)
            done = subprocess.run([BINARY, "list", "--json"], env=environment(), stdout=writer, stderr=subprocess.PIPE,
                                  timeout=60, check=False, restore_signals=not ignore_signal)
            os.close(writer)
            self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_complaints_come_even_so(self):
        reader, writer = os.pipe()
        os.close(reader)
        done = subprocess.run([BINARY, "get", "BootMode", "Nothing"], env=environment(), stdout=writer,
                              stderr=subprocess.PIPE, timeout=60, check=False)
        os.close(writer)
        self.assertEqual((done.returncode, done.stderr),
                         (1, b"redfishconfig: Unable to find the setting Nothing.\n"))

    @unittest.skipUnless(os.path.exists("/dev/full"), "there is no /dev/full")
    def test_a_full_disk_is_reported(self):
        for arguments in (["list"], ["--help"], ["--version"], ["get", "Nothing", "BootMode"]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([BINARY, *arguments], env=environment(), stdout=full, stderr=subprocess.PIPE,
                                      timeout=60, check=False)
            self.assertEqual(done.returncode, 3, arguments)
            self.assertTrue(done.stderr.endswith(b"redfishconfig: cannot write the answer: No space left on device\n"))

    def test_a_closed_output_is_reported(self):
        done = subprocess.run(["sh", "-c", 'exec "$0" list >&-', BINARY], env=environment(), stderr=subprocess.PIPE,
                              timeout=60, check=False)
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"cannot write the answer", done.stderr)


class Files(unittest.TestCase):
    def test_values_may_come_through_a_pipe(self):
        done = subprocess.run([BINARY, "get", "BootMode", "--values", "/dev/stdin"], env=environment(),
                              input=b'{"BootMode": "Legacy"}', capture_output=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stdout), (0, b"BootMode=Legacy\n"))

    def test_a_password_may_come_through_a_socket(self):
        ours, theirs = socket.socketpair()
        with ours, theirs:
            ours.sendall(b"Aa1!Aa1!\n")
            ours.shutdown(socket.SHUT_WR)
            done = subprocess.run([BINARY, "set", "AdminPassword=-"], env=environment(), stdin=theirs,
                                  capture_output=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertEqual(json.loads(done.stdout), {"Attributes": {"AdminPassword": "Aa1!Aa1!"}})

    @unittest.skipIf(os.geteuid() == 0, "root may read every file")
    def test_a_file_that_may_not_be_read(self):
        path = DATA.parent / "unreadable.json"
        path.touch(mode=0o000)
        try:
            done = run("list", "--registry", str(path))
        finally:
            path.unlink()
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"Permission denied", done.stderr)


class Adapting(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.file = self.folder / "adapted.json"

    def tearDown(self):
        shutil.rmtree(self.folder)

    def adapt(self, registry, *arguments, **options):
        return subprocess.run([BINARY, "adapt", "--registry", str(registry), *arguments], env=environment(),
                              capture_output=True, timeout=60, check=False, **options)

    def test_compressed_documents_through_files_and_pipes(self):
        plain = (DATA / "small.json").read_bytes()
        packed = self.folder / "small.json.gz"
        packed.write_bytes(gzip.compress(plain))
        values = gzip.compress(b'\xef\xbb\xbf{"Body": {"Attributes": {"BootMode": "Legacy"}}}')
        done = subprocess.run([BINARY, "get", "BootMode", "--registry", str(packed), "--values", "/dev/stdin"],
                              env=environment(), input=values, capture_output=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"BootMode=Legacy\n", b""))
        done = run("get", "BootMode", "--registry", str(packed), "--as-published")
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"not JSON", done.stderr)

    def test_damaged_ones_are_told(self):
        packed = self.folder / "small.json.gz"
        packed.write_bytes(gzip.compress((DATA / "small.json").read_bytes())[:-9])
        done = run("get", "BootMode", "--registry", str(packed))
        self.assertEqual((done.returncode, done.stderr),
                         (3, f"redfishconfig: {packed}: the gzip data is cut off\n".encode()))

    def test_adapted_twice_is_the_same(self):
        for path in sorted(DATA.glob("form-*.json")) + [DATA / name for name in ("oddities.json", "small.json", "wrapped.json")]:
            once = self.adapt(path)
            self.assertEqual(once.returncode, 0, once)
            self.file.write_bytes(once.stdout)
            self.assertEqual(self.adapt(self.file).stdout, once.stdout, path)

    def test_writes_a_file_as_a_whole_or_not_at_all(self):
        def fill():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))
        done = self.adapt(DATA / "small.json", "-o", str(self.file), preexec_fn=fill)
        self.assertEqual((done.returncode, list(self.folder.iterdir())), (3, []))
        self.assertIn(b"adapted.json: cannot write it: File too large", done.stderr)
        done = self.adapt(DATA / "small.json", "-o", str(self.file))
        self.assertEqual(done.returncode, 0, done)
        self.assertIn(b"adapted.json: 14 attributes and 2 rules written\n", done.stderr)
        self.assertEqual(self.file.stat().st_mode & 0o777, 0o600)
        text = self.file.read_bytes()
        self.assertEqual(text, self.adapt(DATA / "small.json").stdout)
        done = self.adapt(DATA / "one.json", "-o", str(self.file))
        self.assertEqual((done.returncode, self.file.read_bytes()), (3, text))
        self.assertEqual(self.adapt(DATA / "one.json", "-o", str(self.file), "--force").returncode, 0)
        self.assertNotEqual(self.file.read_bytes(), text)

    def test_no_screen_shows_the_passwords_of_a_registry(self):
        self.assertEqual(on_terminal("adapt"), "")
        self.assertIn("AttributeName", on_terminal("adapt", "--registry", str(DATA / "one.json")))

    def test_findings_are_printed_without_passwords(self):
        for registry in ("small.json", "fruits.json", "oddities.json"):
            for options in ([], ["--json"], ["--values", str(DATA / "bios.json")]):
                done = run("lint", "--registry", str(DATA / registry), *options)
                self.assertIn(done.returncode, (0, 1))
                self.assertNotRegex((done.stdout + done.stderr).decode(),
                                    "hunter2|letmein|s3same|s3cret|orange|Lemon|kiwi")


class Saving(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.file = self.folder / "saved.json"

    def tearDown(self):
        self.folder.chmod(0o700)
        shutil.rmtree(self.folder)

    def save(self, *arguments, file=None, **options):
        return subprocess.run([BINARY, "save", "-o", str(file or self.file), *arguments], env=environment(),
                              capture_output=True, timeout=60, check=False, **options)

    def names(self):
        return sorted(entry.name for entry in self.folder.iterdir())

    def test_writes_a_file_for_its_owner_alone(self):
        done = self.save()
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"saved.json: 4 settings saved\n", done.stderr)
        self.assertEqual(self.file.stat().st_mode & 0o777, 0o600)
        document = json.loads(self.file.read_text())
        self.assertEqual(document["values"], {"ActiveCores": 16, "BootMode": "Uefi", "BootRetries": 3, "Lock": "Off"})
        now = datetime.datetime.now(datetime.timezone.utc)
        written = datetime.datetime.strptime(document["savedAt"], "%Y-%m-%dT%H:%M:%S%z")
        self.assertLess(abs((now - written).total_seconds()), 300)

    def test_replaces_a_file_only_when_told(self):
        self.file.write_text("old")
        done = self.save()
        self.assertEqual((done.returncode, self.file.read_text()), (3, "old"))
        self.assertIn(b"it exists already; --force replaces it", done.stderr)
        self.assertEqual(self.save("--force").returncode, 0)
        self.assertNotEqual(self.file.read_text(), "old")
        self.assertEqual(self.names(), ["saved.json"])

    def test_replaces_a_link_and_not_what_it_names(self):
        other = self.folder / "other"
        other.write_text("kept")
        self.file.symlink_to(other)
        self.assertEqual(self.save().returncode, 3)
        self.assertEqual(self.save("--force").returncode, 0)
        self.assertEqual(other.read_text(), "kept")
        self.assertFalse(self.file.is_symlink())

    def test_leaves_a_dangling_link_alone(self):
        self.file.symlink_to(self.folder / "nowhere")
        self.assertEqual(self.save().returncode, 3)
        self.assertEqual(self.names(), ["saved.json"])

    def test_writes_over_nothing_but_files(self):
        os.mkfifo(self.folder / "pipe")
        for target, reason in ((self.folder, b"it is a folder"), (self.folder / "pipe", b"it is no regular file")):
            for options in ([], ["--force"]):
                done = self.save(*options, file=target)
                self.assertEqual(done.returncode, 3)
                self.assertIn(reason, done.stderr)
        self.assertEqual(self.names(), ["pipe"])

    def test_leaves_nothing_behind_on_a_full_disk(self):
        def fill():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))
        for old in (None, "old"):
            if old is not None:
                self.file.write_text(old)
            done = self.save("--force", preexec_fn=fill)
            self.assertEqual(done.returncode, 3)
            self.assertIn(b"saved.json: cannot write it: File too large", done.stderr)
            self.assertEqual(self.names(), [] if old is None else ["saved.json"])
        self.assertEqual(self.file.read_text(), "old")

    def test_reports_a_missing_folder(self):
        done = self.save(file=self.folder / "missing" / "saved.json")
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"No such file or directory", done.stderr)

    @unittest.skipIf(os.geteuid() == 0, "root may write everywhere")
    def test_reports_a_folder_that_may_not_be_written(self):
        self.folder.chmod(0o500)
        self.assertIn(b"Permission denied", self.save().stderr)

    def test_what_is_saved_is_so_when_it_is_restored(self):
        self.save()
        done = run("restore", str(self.file))
        self.assertEqual((done.returncode, json.loads(done.stdout)), (0, {"Attributes": {}}))
        self.assertEqual(run("compare", str(self.file)).returncode, 0)


class Passwords(unittest.TestCase):
    """No command prints a password, whatever the options."""

    COMMANDS = [["list", "--all"], ["get", "--all"], ["choices", "--all"], ["defaults", "--all"],
                ["describe", "--all"], ["groups"]]

    def everything(self, registry, values, names):
        for command in self.COMMANDS + [["show", *names], ["get", *names], ["defaults", *names], ["choices", *names]]:
            for form in ([], ["--json"], ["--as-published"], ["--as-published", "--json"]):
                done = run(*command, *form, *values, "--registry", str(DATA / registry), "--trace", "4",
                           "--include-protected")
                self.assertIn(done.returncode, (0, 1))
                if "--as-published" in form:
                    self.assertIn(b"[4] ", done.stderr, "the log is looked through as well")
                yield (done.stdout + done.stderr).decode()

    def test_small_system(self):
        names = ["AdminPassword", "UserPassword", "Lock"]
        for text in self.everything("small.json", ["--values", str(DATA / "bios.json")], names):
            for secret in ("hunter2", "letmein", "s3same"):
                self.assertNotIn(secret, text)

    def test_new_ones_stand_in_the_body_alone(self):
        for new, accepted in (("n3w-one", True), ("tiny", False)):
            with tempfile.NamedTemporaryFile("w") as file:
                file.write(new + "\n")
                file.flush()
                for value, given in ((new, None), ("@" + file.name, None), ("-", new + "\n")):
                    for options in ([], ["--json"], ["--partial"]):
                        done = subprocess.run([BINARY, "set", "AdminPassword=" + value, "--trace", "4", *options],
                                              env=environment(), input=given, capture_output=True, timeout=60,
                                              check=False, text=True)
                        self.assertEqual(done.returncode, 0 if accepted else 1)
                        self.assertNotIn(new, done.stderr)
                        self.assertIn("[4] ", done.stderr)
                        self.assertEqual(done.stdout.count(new), 1 if accepted else 0, done.stdout)

    def test_no_screen_shows_a_body_with_one(self):
        for options in ([], ["--json"]):
            text = on_terminal("set", "AdminPassword=n3w-one", *options)
            self.assertNotIn("n3w-one", text)
        self.assertIn("Legacy", on_terminal("set", "BootMode=Legacy"))

    def test_none_is_taken_from_or_told_of_a_file(self):
        with tempfile.NamedTemporaryFile("w") as file:
            json.dump({"AdminPassword": "n3w-one", "UserPassword": "0ther-one"}, file)
            file.flush()
            for command in ("restore", "compare"):
                for options in ([], ["--json"], ["--trace", "4"]):
                    done = run(command, file.name, *options)
                    self.assertNotRegex((done.stdout + done.stderr).decode(), "n3w-one|0ther-one|hunter2")
        for options in ([], ["--verbose"], ["--with-unique", "--include-protected"]):
            done = run("save", *options)
            self.assertNotRegex((done.stdout + done.stderr).decode(), "hunter2|letmein")

    def test_what_rules_compare_with(self):
        for text in self.everything("fruits.json", [], ["Enough", "Apple", "Pear", "Plum"]):
            for secret in ("orange", "Lemon", "kiwi"):
                self.assertNotIn(secret, text)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    BINARY = os.path.abspath(sys.argv.pop(1))
    unittest.main()
