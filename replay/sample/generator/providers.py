"""The providers of the sample computer's events."""

from dataclasses import dataclass

from .values import LOCAL_SERVICE_SID, SYSTEM_SID, guid_of

PLAIN_KEYWORDS = 0x8000000000000000
CLASSIC_KEYWORDS = 0x80000000000000


@dataclass(frozen=True)
class Provider:
    """The properties that all events of a provider share."""

    name: str
    process_id: int | None = None  # None: the events have no process id
    user: str | None = None
    classic: bool = False  # unnamed values, qualifiers, no GUID
    old: bool = False  # classic, and without Version, Opcode, Correlation and Execution
    event_source: str | None = None
    keywords: int = PLAIN_KEYWORDS

    @property
    def guid(self):
        """Classic providers have no GUID unless they now have a manifest."""
        return None if self.classic and not self.event_source else guid_of(self.name)


def _classic(name, **fields):
    return Provider(name, process_id=0, classic=True, keywords=CLASSIC_KEYWORDS, **fields)


def _old(name, **fields):
    return Provider(name, classic=True, old=True, keywords=CLASSIC_KEYWORDS, **fields)


_PROVIDERS = (
    # System
    Provider("Microsoft-Windows-Kernel-General", 4, SYSTEM_SID),
    Provider("Microsoft-Windows-Kernel-Power", 4, SYSTEM_SID),
    Provider("Microsoft-Windows-Kernel-Boot", 4, SYSTEM_SID),
    Provider("Microsoft-Windows-Time-Service", 1184, LOCAL_SERVICE_SID),
    Provider("Microsoft-Windows-DNS-Client", 1620, "S-1-5-20"),
    Provider("Microsoft-Windows-WindowsUpdateClient", 2916, SYSTEM_SID),
    Provider("Microsoft-Windows-Kernel-PnP", 4, SYSTEM_SID),
    Provider("Microsoft-Windows-UserPnp", 5032, SYSTEM_SID),
    Provider("Microsoft-Windows-Ntfs", 4, SYSTEM_SID),
    Provider(
        "Microsoft-Windows-DistributedCOM", 980, SYSTEM_SID, classic=True, event_source="DCOM"
    ),
    Provider("Service Control Manager", 812, classic=True, event_source="Service Control Manager",
             keywords=0x8080000000000000),
    Provider("User32", 1012, SYSTEM_SID, classic=True, event_source="User32",
             keywords=0x8080000000000000),
    Provider("Microsoft-Windows-WHEA-Logger", 1012, LOCAL_SERVICE_SID),
    _classic("EventLog"),
    _old("disk"),
    _old("rt640x64"),
    _old("BTHUSB"),
    # Security
    Provider("Microsoft-Windows-Security-Auditing", 756),
    Provider("Microsoft-Windows-Eventlog", 1320),
    # Application
    _classic("Application Error"),
    _classic("Application Hang"),
    _classic("MsiInstaller"),
    _classic("Windows Error Reporting"),
    _old("LedgerView"),
    _old("Ledger & Sons' \"Month end\""),
    Provider("Microsoft-Windows-RestartManager", 4404, SYSTEM_SID),
    Provider("Microsoft-Windows-User Profiles Service", 1452, SYSTEM_SID),
    Provider("Microsoft-Windows-Search", 6012, SYSTEM_SID, classic=True,
             event_source="Windows Search Service"),
    Provider("Harbor-Backup-Agent", 3340, SYSTEM_SID),
    Provider("Alder-Sync", 7720),
    Provider("Cinder-Media", 8816),
    Provider("Fjordlys-Drift", 2460, LOCAL_SERVICE_SID),
    Provider("Microsoft-Windows-Servicing", 5208, SYSTEM_SID),
    _classic("PowerShell"),
    # Applications and services
    Provider("Microsoft-Windows-TaskScheduler", 1524, SYSTEM_SID),
    Provider("Microsoft-Windows-GroupPolicy", 1088, SYSTEM_SID),
    Provider("Microsoft-Windows-WLAN-AutoConfig", 2204, SYSTEM_SID),
    Provider("Microsoft-Windows-Windows Defender", 3672, SYSTEM_SID),
    Provider("Microsoft-Windows-PrintService", 2808, SYSTEM_SID),
    Provider("Lantern-Diagnostics-Probe", 9344, SYSTEM_SID),
)

PROVIDERS = {provider.name: provider for provider in _PROVIDERS}
