"""Slurm with one node, this machine, for as long as a test takes: its own two daemons, ports and folder."""

import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time


def is_installed():
    return all(shutil.which(name, path=os.environ["PATH"] + ":/usr/sbin")
               for name in ("slurmctld", "slurmd", "sbatch", "sinfo"))


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


class SlurmNode:
    """`env` is what sbatch and its kin need to find it. Raises RuntimeError when it does not come up."""

    def __init__(self, cpus=2):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="slurm-"))
        self.daemons = []
        user = subprocess.run(["id", "-un"], capture_output=True, text=True, check=True).stdout.strip()
        for name in ("state", "spool"):
            (self.folder / name).mkdir()
        config = self.folder / "slurm.conf"
        # Nobody else talks to these daemons, so nobody has to prove who he is.
        config.write_text(f"""ClusterName=test
SlurmctldHost=localhost(127.0.0.1)
SlurmctldPort={free_port()}
SlurmdPort={free_port()}
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/none
CredType=cred/none
StateSaveLocation={self.folder}/state
SlurmdSpoolDir={self.folder}/spool
SlurmctldPidFile={self.folder}/slurmctld.pid
SlurmdPidFile={self.folder}/slurmd.pid
SlurmctldLogFile={self.folder}/slurmctld.log
SlurmdLogFile={self.folder}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
JobAcctGatherType=jobacct_gather/none
MpiDefault=none
ReturnToService=2
SchedulerTimeSlice=5
MinJobAge=10
NodeName=localhost NodeAddr=127.0.0.1 CPUs={cpus} State=UNKNOWN
PartitionName=all Nodes=localhost Default=YES MaxTime=INFINITE State=UP
""")
        self.env = dict(os.environ, SLURM_CONF=str(config))

    def __enter__(self):
        path = os.environ["PATH"] + ":/usr/sbin"
        try:
            for words in (("slurmctld", "-D", "-i"), ("slurmd", "-D", "-N", "localhost")):
                log = open(self.folder / (words[0] + ".out"), "wb")
                self.daemons.append(subprocess.Popen(
                    [shutil.which(words[0], path=path), *words[1:]], env=self.env, stdout=log, stderr=log))
                log.close()
            for _ in range(150):
                state = subprocess.run(["sinfo", "-h", "-o", "%t"], env=self.env, capture_output=True,
                                       text=True)
                if state.returncode == 0 and state.stdout.strip() == "idle":
                    return self
                time.sleep(0.2)
            raise RuntimeError(self.words())
        except BaseException:
            self.__exit__()
            raise

    def words(self):
        """What the daemons have to say, the end of it."""
        return "\n".join(f"{log.name}:\n{log.read_text(errors='replace')[-2000:]}"
                         for log in sorted(self.folder.glob("*.log")) + sorted(self.folder.glob("*.out")))

    def __exit__(self, *_):
        for daemon in reversed(self.daemons):
            daemon.terminate()
        for daemon in self.daemons:
            try:
                daemon.wait(timeout=20)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
