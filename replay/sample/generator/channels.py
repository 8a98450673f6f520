"""The channels of the sample computer."""

from dataclasses import dataclass

TYPES = ("Admin", "Operational", "Analytic", "Debug")


@dataclass(frozen=True)
class Channel:
    name: str
    type: str
    publisher: str = ""
    enabled: bool = True
    access: str = ""


# Publisher | the part of each channel's path after the publisher and a slash. The last word of a
# channel's name is its type. Only Admin and Operational channels are enabled by default.
_BY_PUBLISHER = """
Alder-Sync                                        | Operational Debug
Cinder-Media                                      | Operational Analytic
Fjordlys-Drift                                    | Admin Operational Debug
Harbor-Backup-Agent                               | Admin Operational Debug
Harbor-Backup-Restore                             | Operational
Harbor-Licensing                                  | Admin
Lantern-Diagnostics-Probe                         | Operational Analytic
Microsoft-Windows-AppLocker                       | Operational
Microsoft-Windows-Application-Experience          | Program-Inventory/Operational Debug
Microsoft-Windows-Application-Experience          | Program-Telemetry/Operational
Microsoft-Windows-AppXDeployment                  | Operational Diagnostic/Debug
Microsoft-Windows-AppXDeployment-Server           | Operational Restricted/Operational Debug
Microsoft-Windows-Audio                           | Operational CaptureMonitor/Operational
Microsoft-Windows-Audio                           | PlaybackManager/Operational Performance/Analytic
Microsoft-Windows-Authentication                  | ProtectedUser-Client/Admin
Microsoft-Windows-Authentication                  | AuthenticationPolicyFailures/Admin
Microsoft-Windows-Backup                          | Operational
Microsoft-Windows-Bits-Client                     | Operational Analytic
Microsoft-Windows-BitLocker                       | Operational Tracing/Analytic
Microsoft-Windows-Bluetooth-BthLEPrepairing       | Operational
Microsoft-Windows-CAPI2                           | Operational
Microsoft-Windows-CertificateServicesClient-Lifecycle-User | Operational
Microsoft-Windows-CodeIntegrity                   | Operational Verbose/Debug
Microsoft-Windows-Crypto-DPAPI                    | Operational BackUpKeySvc/Debug
Microsoft-Windows-DeviceSetupManager              | Admin Operational Analytic Debug
Microsoft-Windows-Dhcp-Client                     | Admin Operational
Microsoft-Windows-DHCPv6-Client                   | Admin Operational
Microsoft-Windows-Diagnosis-Scheduled             | Operational
Microsoft-Windows-Diagnostics-Performance         | Operational Diagnostic/Debug
Microsoft-Windows-DNS-Client                      | Operational
Microsoft-Windows-DriverFrameworks-UserMode       | Operational
Microsoft-Windows-FileHistory-Core                | WHC/Operational Analytic
Microsoft-Windows-GroupPolicy                     | Operational
Microsoft-Windows-Hyper-V-Guest-Drivers           | Admin Operational Analytic Debug
Microsoft-Windows-International                   | Operational
Microsoft-Windows-Kernel-Boot                     | Operational Analytic
Microsoft-Windows-Kernel-EventTracing             | Admin Analytic
Microsoft-Windows-Kernel-IO                       | Operational
Microsoft-Windows-Kernel-PnP                      | Configuration/Operational Diagnostic/Analytic
Microsoft-Windows-Kernel-PnP                      | Driver-Watchdog/Operational
Microsoft-Windows-Kernel-Power                    | Thermal-Operational Diagnostic/Analytic
Microsoft-Windows-Kernel-Process                  | Analytic
Microsoft-Windows-Kernel-WHEA                     | Errors/Operational Operational
Microsoft-Windows-LanguagePackSetup               | Operational Analytic Debug
Microsoft-Windows-NetworkProfile                  | Operational Diagnostic/Analytic
Microsoft-Windows-NCSI                            | Operational Analytic
Microsoft-Windows-Ntfs                            | Operational WHC/Operational Performance/Analytic
Microsoft-Windows-OfflineFiles                    | Operational Analytic Debug
Microsoft-Windows-PowerShell                      | Admin Operational Analytic Debug
Microsoft-Windows-PrintService                    | Admin Operational Debug
Microsoft-Windows-RemoteAssistance                | Admin Operational
Microsoft-Windows-Resource-Exhaustion-Detector    | Operational
Microsoft-Windows-Security-SPP-UX-Notifications   | Admin
Microsoft-Windows-Shell-Core                      | Operational ActionCenter/Operational
Microsoft-Windows-Shell-Core                      | Diagnostic/Analytic
Microsoft-Windows-SMBClient                       | Connectivity/Operational Audit/Admin
Microsoft-Windows-SMBClient                       | Security/Operational
Microsoft-Windows-SMBServer                       | Connectivity/Operational Audit/Admin
Microsoft-Windows-SMBServer                       | Security/Operational Analytic
Microsoft-Windows-StorageSpaces-Driver            | Operational Diagnostic/Debug
Microsoft-Windows-TaskScheduler                   | Operational Maintenance/Operational
Microsoft-Windows-TaskScheduler                   | Diagnostic/Debug
Microsoft-Windows-Time-Service                    | Operational
Microsoft-Windows-User Profile Service            | Operational Diagnostic/Debug
Microsoft-Windows-VolumeSnapshot-Driver           | Operational Analytic
Microsoft-Windows-Wcmsvc                          | Operational Diagnostic/Debug
Microsoft-Windows-Windows Defender                | Operational WHC/Operational
Microsoft-Windows-Windows Firewall With Advanced Security | ConnectionSecurity/Operational
Microsoft-Windows-Windows Firewall With Advanced Security | Firewall/Operational
Microsoft-Windows-WindowsUpdateClient             | Operational Analytic
Microsoft-Windows-WLAN-AutoConfig                 | Operational Diagnostic/Debug
Microsoft-Windows-WMI-Activity                    | Operational
"""

# Channels that the table above cannot express: without a publisher, with a path that does not begin
# with the publisher, with names that are hard to parse, or with an unusual state.
_OTHERS = (
    Channel("Application", "Admin"),
    Channel("Security", "Admin"),
    Channel("Setup", "Operational"),
    Channel("System", "Admin"),
    Channel("ForwardedEvents", "Operational"),
    Channel("HardwareEvents", "Admin"),
    Channel("Key Management Service", "Admin"),
    Channel("Windows PowerShell", "Admin"),
    # Left enabled after tracing; such a channel cannot be read.
    Channel("Microsoft-Windows-WMI-Activity/Trace", "Analytic", "Microsoft-Windows-WMI-Activity"),
    # Access is denied to everyone but its owner.
    Channel("Harbor-Vault/Audit", "Admin", "Harbor-Vault", access="denied"),
    # Paths that do not begin with the publisher, and one without a slash.
    Channel("AMSI/Operational", "Operational", "Microsoft-Antimalware-Scan-Interface"),
    Channel("Cinder Legacy Codecs", "Admin", "Cinder-Media"),
    Channel("Cinder-Media-Debug", "Debug", "Cinder-Media", enabled=False),
    Channel("EndpointMapper", "Analytic", "Microsoft-Windows-RPCSS", enabled=False),
    Channel("OpenSSH/Operational", "Operational", "OpenSSH"),
    Channel("OpenSSH/Debug", "Debug", "OpenSSH", enabled=False),
    # Names with unusual characters that Windows allows.
    Channel("Harbor Backup (Nightly)", "Operational", "Harbor-Backup-Agent"),
    Channel("Ålesund Brygge+Kai #2/Drift", "Operational", "Ålesund Brygge+Kai #2"),
    Channel("lower case first, then [brackets]", "Admin"),
    Channel("プリンター監視/Operational", "Operational", "プリンター監視"),
    Channel("Журнал склада/Admin", "Admin", "Журнал склада"),
)


def _type_of(name):
    last_word = name.replace("/", "-").rsplit("-", 1)[-1]
    if last_word not in TYPES:
        raise ValueError(f"{name} does not end in a channel type")
    return last_word


def _of_publishers():
    for line in filter(None, _BY_PUBLISHER.splitlines()):
        publisher, names = (part.strip() for part in line.split("|"))
        for name in names.split():
            kind = _type_of(name)
            yield Channel(f"{publisher}/{name}", kind, publisher, kind in ("Admin", "Operational"))


CHANNELS = (*_OTHERS, *_of_publishers())
