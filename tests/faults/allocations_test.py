"""Every allocation fails once: a sentence and a status, nothing half written."""

import errno

from faults import JOBS, FaultTest, main

ORDINARY = 25  # allocations of each job that an ordinary run tries


class Allocations(FaultTest):
    def test_each_fails_once(self):
        for job in JOBS:
            self.prepare(job, False)
            count = self.run_job(job, "")[1][1]
            self.assertGreater(count, 100, job)
            for number in self.numbers(count, ORDINARY):
                with self.subTest(job=job, allocation=number):
                    self.prepare(job, True)
                    done, _ = self.run_job(job, "allocation:%d:%d" % (number, errno.ENOMEM))
                    self.assert_whole(job, done, False)


if __name__ == "__main__":
    main()
