"""Every call by which files are read and written fails once with each error, or is the last."""

import errno
import random
import signal
import subprocess
import time

from faults import EVERY, JOBS, FaultTest, main

ERRORS = [errno.ENOSPC, errno.EIO, errno.EACCES, errno.EINTR, errno.EMFILE, errno.EDQUOT]
ORDINARY = 5  # calls of each job and error that an ordinary run tries
KILLS = 25    # and kills, of each job with and without former outputs
AT_ANY_TIME = 2500 if EVERY else 12  # kills of each job


class Calls(FaultTest):
    def calls_of(self, job):
        self.prepare(job, False)
        return self.run_job(job, "")[1][0]

    def test_errors(self):
        for job in JOBS:
            count = self.calls_of(job)
            self.assertGreater(count, 5, job)
            for error in ERRORS:
                for number in self.numbers(count, ORDINARY):
                    with self.subTest(job=job, call=number, error=errno.errorcode[error]):
                        self.prepare(job, True)
                        done, _ = self.run_job(job, "call:%d:%d" % (number, error))
                        self.assert_whole(job, done, False)

    def test_kills(self):
        for job in JOBS:
            count = self.calls_of(job)
            for with_old in (False, True):
                for number in self.numbers(count, KILLS):
                    with self.subTest(job=job, call=number, old=with_old):
                        self.prepare(job, with_old)
                        done, _ = self.run_job(job, "call:%d:0" % number)
                        self.assert_whole(job, done, True)
                        # The next run is not hindered by what is left, and sweeps it.
                        if EVERY or number % 5 == 0:
                            again, _ = self.run_job(job, "")
                            self.assert_whole(job, again, False)
                            self.assertEqual(0, again.returncode, again.stderr)

    def test_kills_at_any_time(self):
        chance = random.Random(1)
        for job in JOBS:
            self.prepare(job, True)
            command = list(map(str, JOBS[job][0]))
            begun = time.monotonic()
            subprocess.run(command, cwd=self.folder, capture_output=True, check=True)
            lasts = time.monotonic() - begun
            for number in range(AT_ANY_TIME):
                self.prepare(job, True)
                run = subprocess.Popen(command, cwd=self.folder, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
                time.sleep(chance.uniform(0, 1.1 * lasts))
                run.send_signal(signal.SIGKILL)
                run.wait()
                with self.subTest(job=job, kill=number):
                    self.assert_whole(job, run, True)


if __name__ == "__main__":
    main()
