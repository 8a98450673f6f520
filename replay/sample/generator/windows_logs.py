"""The events of the classic logs."""

from .row import (
    ATTRIBUTED, AUDIT, CRITICAL, ERROR, FAILURE, INFORMATION, SUCCESS, USER_DATA, WARNING,
    Burst, Log, Row,
)

_KERNEL_GENERAL = "Microsoft-Windows-Kernel-General"
_KERNEL_POWER = "Microsoft-Windows-Kernel-Power"
_SERVICES = "Service Control Manager"
_TIME = "Microsoft-Windows-Time-Service"
_UPDATE = "Microsoft-Windows-WindowsUpdateClient"

_START_OF_THE_COMPUTER = Burst((
    Row(_KERNEL_GENERAL, 12, INFORMATION, "Date", "The operating system started at {Date}."),
    Row("EventLog", 6009, INFORMATION, "",
        "Windows 10.0, build 19045, multiprocessor free.", binary=True),
    Row("EventLog", 6005, INFORMATION, "", "The event log service was started.", binary=True),
    Row("Microsoft-Windows-Kernel-Boot", 20, INFORMATION, "Count",
        "The last start of the computer took {Count} ms up to the loader."),
    Row(_SERVICES, 7036, INFORMATION, "Service State", "The {Service} service is now {State}."),
    Row(_SERVICES, 7036, INFORMATION, "Service State", "The {Service} service is now {State}."),
    Row(_TIME, 37, INFORMATION, "Host Address",
        "The time provider is receiving valid time data from {Host} ({Address}).",
        form=ATTRIBUTED, root="TIME_SOURCE_REACHABLE"),
), weight=14)

_END_OF_THE_RUN = Burst((
    Row("User32", 1074, INFORMATION, "Application Computer Reason User",
        "{Application} asked {Computer} to restart on behalf of {User}.\nReason: {Reason}"),
    Row("EventLog", 6006, INFORMATION, "", "The event log service was stopped."),
    Row(_KERNEL_GENERAL, 13, INFORMATION, "Date",
        "The operating system is shutting down at {Date}."),
), weight=8)

SYSTEM = Log("System", 48117, 1200, "2025-09-22", "2025-11-14", (
    _START_OF_THE_COMPUTER,
    _END_OF_THE_RUN,
    Row(_SERVICES, 7036, INFORMATION, "Service State", "The {Service} service is now {State}.",
        weight=330, binary=True),
    Row(_SERVICES, 7040, INFORMATION, "Service StartType",
        "The start type of the {Service} service was changed to {StartType}.", weight=60),
    Row(_SERVICES, 7031, ERROR, "Service Attempts Duration",
        "The {Service} service ended unexpectedly. It has done this {Attempts} times. "
        "It will be restarted in {Duration} ms.", weight=9),
    Row(_SERVICES, 7009, ERROR, "Duration Service",
        "The {Service} service did not connect within {Duration} ms.",
        weight=7),
    Row(_KERNEL_GENERAL, 1, INFORMATION, "Date Duration",
        "The system time was changed to {Date}.\n\nThe difference was {Duration} ms.", weight=40),
    Row(_KERNEL_GENERAL, 16, INFORMATION, "Size Path Count",
        "The access history of the hive {Path} was cleared: {Count} keys updated, "
        "{Size} pages written.",
        weight=70),
    Row(_KERNEL_POWER, 41, CRITICAL, "Count Process",
        "The computer restarted without having been shut down cleanly first. It may have stopped "
        "responding, crashed, or lost power.", weight=4),
    Row(_KERNEL_POWER, 105, INFORMATION, "Percent",
        "The power source changed. The battery stands at {Percent} %.", weight=55),
    Row(_KERNEL_POWER, 42, INFORMATION, "Reason", "The computer is entering sleep.", weight=24),
    Row(_TIME, 35, INFORMATION, "Host Address",
        "The time service now synchronises the clock with {Host} ({Address}).", weight=40,
        form=ATTRIBUTED, root="TIME_SOURCE_CHOSEN"),
    Row(_TIME, 134, WARNING, "Host ErrorCode Duration",
        "The name of the time source {Host} could not be resolved ({ErrorCode}). "
        "The next try follows in {Duration} minutes.", weight=14,
        form=ATTRIBUTED, root="MANUAL_PEER_DNS_ERROR"),
    Row("Microsoft-Windows-DNS-Client", 1014, WARNING, "Host Count Address",
        "None of the configured DNS servers answered the query for {Host}.", weight=28),
    Row("Microsoft-Windows-DistributedCOM", 10016, WARNING, "User Computer Application Process",
        "The permission settings do not let the user {Computer}\\{User} start the COM server "
        "of {Application}. They can be changed in Component Services.", weight=60),
    Row(_UPDATE, 43, INFORMATION, "Update Count", "The installation of an update began: {Update}",
        weight=26),
    Row(_UPDATE, 19, INFORMATION, "Update Count", "An update was installed: {Update}", weight=24),
    Row(_UPDATE, 20, ERROR, "ErrorCode Update",
        "The installation of an update failed with {ErrorCode}: {Update}", weight=6),
    Row("Microsoft-Windows-UserPnp", 20001, INFORMATION, "Driver Version Device ErrorCode",
        "The driver {Driver} was installed for {Device}.", weight=16,
        form=USER_DATA, root="InstallDevice"),
    Row("Microsoft-Windows-Kernel-PnP", 219, WARNING, "Device Driver ErrorCode",
        "The driver {Driver} could not be loaded for {Device}.", weight=12),
    Row("Microsoft-Windows-Ntfs", 98, INFORMATION, "Volume Count",
        "The volume {Volume} is healthy. Nothing needs to be done.", weight=45),
    Row("disk", 51, WARNING, "Disk", "An error was found on {Disk} during a paging operation.",
        weight=9, binary=True),
    Row("disk", 7, ERROR, "Disk", "The device {Disk} has a bad block.", weight=5, binary=True),
    Row("rt640x64", 27, WARNING, "Adapter", None, weight=26, binary=True),  # not registered
    Row("BTHUSB", 18, INFORMATION, "Address", None, weight=12, binary=True),  # not registered
    Row("Microsoft-Windows-WHEA-Logger", 17, WARNING, "Device Size", None, weight=4),  # nor this
))

_ACCOUNT = "\n\tAccount:\t\t{User}\n\tComputer:\t{Computer}\n\tLogon ID:\t\t{LogonId}\n"
_SUBJECT = "Subject:" + _ACCOUNT
_AUDITING = "Microsoft-Windows-Security-Auditing"


def _audit(event_id, keywords, values, message, weight, task):
    return Row(_AUDITING, event_id, AUDIT, values, message, weight, keywords, task)


SECURITY = Log("Security", 211904, 420, "2025-10-20", "2025-11-14", (
    _audit(4624, SUCCESS, "User Computer LogonId LogonType Station Address Path",
           "An account was logged on.\n\n" + _SUBJECT +
           "\nLogon:\n\tType:\t\t{LogonType}\n\tProcess:\t\t{Path}\n"
           "\nNetwork:\n\tWorkstation:\t{Station}\n\tAddress:\t\t{Address}", 110, 12544),
    _audit(4634, SUCCESS, "User Computer LogonId LogonType",
           "An account was logged off.\n\n" + _SUBJECT + "\nLogon Type:\t\t{LogonType}", 70, 12545),
    _audit(4672, SUCCESS, "User Computer LogonId Privileges",
           "Special privileges were given to a new logon.\n\n" + _SUBJECT +
           "\nPrivileges:\t\t{Privileges}", 70, 12548),
    _audit(4625, FAILURE, "User Computer LogonId LogonType Status Station Address",
           "An account failed to log on.\n\n" + _SUBJECT +
           "\nFailure:\n\tStatus:\t\t{Status}\n\tLogon Type:\t{LogonType}\n"
           "\nNetwork:\n\tWorkstation:\t{Station}\n\tAddress:\t\t{Address}", 38, 12544),
    _audit(4648, SUCCESS, "User Computer LogonId Account Host Path",
           "A logon was tried with explicit credentials.\n\n" + _SUBJECT +
           "\nTarget:\n\tAccount:\t\t{Account}\n\tServer:\t\t{Host}\n"
           "\nProcess:\t\t{Path}", 20, 12544),
    _audit(4688, SUCCESS, "User Computer LogonId Process Path",
           "A new process was created.\n\n" + _SUBJECT +
           "\nProcess:\n\tID:\t\t{Process}\n\tName:\t\t{Path}\n\tToken:\t\t%%1936", 60, 13312),
    _audit(4798, SUCCESS, "User Computer LogonId Sid Path",
           "The local groups of a user were listed.\n\n" + _SUBJECT +
           "\nUser:\t\t{Sid}\nProcess:\t\t{Path}", 24, 13824),
    _audit(5152, FAILURE, "Path Address Port",
           "The filtering platform blocked a packet.\n\nApplication:\t{Path}\n"
           "Source:\t\t{Address}:{Port}", 16, 12809),
    _audit(4656, FAILURE, "User Computer LogonId Folder Process",
           "A handle to an object was refused.\n\n" + _SUBJECT + "\nObject:\t\t{Folder}", 8, 12800),
    Row("Microsoft-Windows-Eventlog", 1102, INFORMATION, "Sid User Computer LogonId",
        "The audit log was cleared.\n" + _SUBJECT, 1, 0x4020000000000000, 104,
        USER_DATA, "LogFileCleared"),
))

_FAULT = Burst((
    Row("Application Error", 1000, ERROR,
        "Application Version Module Version Exception Offset Process Path",
        "Faulting application: {Application}, version {Version}\nFaulting module: {Module}\n"
        "Exception code: {Exception}\nFault offset: {Offset}\nProcess id: {Process}\n"
        "Application path: {Path}", task=100),
    Row("Windows Error Reporting", 1001, INFORMATION, "Count Application Version Module",
        "Fault bucket {Count}, type 4\nApplication: {Application} {Version}\nModule: {Module}\n\n"
        "Attached files:\n\n\nThe report may be found here:\n"),
), weight=26)

APPLICATION = Log("Application", 20481, 400, "2025-09-29", "2025-11-14", (
    _FAULT,
    Row("Application Hang", 1002, ERROR, "Application Version Process",
        "The program {Application} {Version} stopped answering Windows and was closed.\n"
        "Process ID: {Process}", weight=12, task=101),
    Burst((
        Row("Microsoft-Windows-RestartManager", 10000, INFORMATION, "Count Date",
            "Restart group {Count} was opened at {Date}.", form=USER_DATA, root="RestartGroup"),
        Row("MsiInstaller", 1033, INFORMATION, "Product Version Count",
            "Windows Installer installed the product {Product}, version {Version}."),
        Row("Microsoft-Windows-RestartManager", 10001, INFORMATION, "Count Date",
            "Restart group {Count}, opened at {Date}, was closed.", form=USER_DATA, root="RestartGroup"),
    ), weight=18),
    Row("MsiInstaller", 11708, ERROR, "Product",
        "Product: {Product} -- Installation failed.", weight=6, binary=True),
    Row("Microsoft-Windows-User Profiles Service", 1530, WARNING, "Sid Process Path",
        "The registry file of a user is still in use by other programs and will be unloaded "
        "now. Programs may not work properly afterwards.\n\nDETAIL -\n1 user registry handle "
        "leaked from {Sid}:\nProcess {Process} ({Path})\n", weight=14, of_a_user=True),
    Row("Microsoft-Windows-Search", 1003, INFORMATION, "",
        "The search service was started.", weight=26),
    Row("Microsoft-Windows-Search", 3013, WARNING, "Folder ErrorCode",
        "The entry {Folder} in the index could not be updated ({ErrorCode}).", weight=16),
    Row("Microsoft-Windows-Search", 3100, INFORMATION, "Count", None, weight=8),  # text missing
    Row("Harbor-Backup-Agent", 100, INFORMATION, "Folder Count Size",
        "The backup of {Folder} finished: {Count} files, {Size} MB.", weight=40),
    Row("Harbor-Backup-Agent", 210, WARNING, "Folder Reason",
        "The backup of {Folder} was put off because {Reason}.", weight=18),
    Row("Harbor-Backup-Agent", 300, ERROR, "Folder ErrorCode",
        "The backup of {Folder} failed ({ErrorCode}).\n\nThe files of the last good backup are "
        "untouched. Check that the target is reachable, then start the backup again.", weight=12),
    Row("Alder-Sync", 12, INFORMATION, "User Folder Count",
        "{Count} files of {User} in {Folder} are up to date.", weight=30),
    Row("LedgerView", 1, INFORMATION, "User Count", None, weight=24),  # not registered
    Row("LedgerView", 9, ERROR, "User ErrorCode Folder", None, weight=8),  # nor this
    Row("Ledger & Sons' \"Month end\"", 40, INFORMATION, "Count Date", None, weight=6),
))

SETUP = Log("Setup", 311, 36, "2025-10-14", "2025-11-12", (
    Burst((
        Row("Microsoft-Windows-Servicing", 1, INFORMATION, "Update ErrorCode",
            "Changes for {Update} have begun. The present state is Absent.",
            form=USER_DATA, root="CbsPackageInitiateChanges"),
        Row("Microsoft-Windows-Servicing", 2, INFORMATION, "Update ErrorCode",
            "{Update} was changed to the Installed state.",
            form=USER_DATA, root="CbsPackageChangeState"),
    ), weight=8),
    Row("Microsoft-Windows-Servicing", 3, ERROR, "Update ErrorCode",
        "{Update} could not be changed to the Installed state. Status: {ErrorCode}.",
        form=USER_DATA, root="CbsPackageChangeState"),
    Row("Microsoft-Windows-Servicing", 4, INFORMATION, "Update",
        "A restart is needed before {Update} can be changed to the Installed state.",
        form=USER_DATA, root="CbsPackageInitiateChanges"),
))

POWERSHELL = Log("Windows PowerShell", 1502, 90, "2025-10-06", "2025-11-13", (
    Burst((
        Row("PowerShell", 600, INFORMATION, "Service State Command",
            "Provider \"Registry\" is Started.\n\nDetails:\n\tHostName=ConsoleHost\n"
            "\tHostVersion=5.1.19041.4648\n\tCommandLine={Command}", task=6),
        Row("PowerShell", 400, INFORMATION, "State Command",
            "The engine state changed from None to Available.\n\nDetails:\n"
            "\tHostName=ConsoleHost\n\tCommandLine={Command}", task=4),
    ), weight=6),
    Row("PowerShell", 403, INFORMATION, "State Command",
        "The engine state changed from Available to Stopped.\n\nDetails:\n"
        "\tHostName=ConsoleHost\n\tCommandLine={Command}", weight=5, task=4),
    Row("PowerShell", 300, WARNING, "Command ErrorCode",
        "Provider health: {Command} was refused ({ErrorCode}).", task=3),
))

LOGS = (SYSTEM, SECURITY, APPLICATION, SETUP, POWERSHELL)
