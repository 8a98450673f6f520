"""The values of events: for each name, a function that generates one."""

import uuid

from .recording import COMPUTER

_NAMESPACE = uuid.UUID("6f0a53c2-6d0f-4d8e-9c0b-2f6c0c9a7d11")

MACHINE_SID = "S-1-5-21-1893451121-742019388-3310927745"
SYSTEM_SID = "S-1-5-18"
LOCAL_SERVICE_SID = "S-1-5-19"
USER_SIDS = {"anna": f"{MACHINE_SID}-1001", "bjarne": f"{MACHINE_SID}-1002"}


def guid_of(name):
    """Returns a fictional GUID that depends only on the name."""
    return f"{{{uuid.uuid5(_NAMESPACE, name)}}}"


def _one_of(*options):
    return lambda dice: dice.pick(options)


def _number(low, high):
    return lambda dice: str(dice.between(low, high))


def _hex_number(low, high):
    return lambda dice: f"0x{dice.between(low, high):x}"


def _address(prefix):
    return lambda dice: f"{prefix}.{dice.between(2, 250)}"


def _date(dice):
    """Returns a date as Windows formats it in messages, with a left-to-right mark before each part."""
    month, day = dice.between(9, 11), dice.between(1, 30)
    hour = dice.between(0, 23)
    return f"\u200e2025\u200e-\u200e{month:02d}\u200e-\u200e{day:02d}T{hour:02d}:15:00Z"


MAKERS = {
    "Account": _one_of("anna", "bjarne", "SYSTEM", "LOCAL SERVICE", "NETWORK SERVICE"),
    "Adapter": _one_of("Ethernet", "Wi-Fi", "Bluetooth Network Connection"),
    "Address": _address("192.168.20"),
    "Application": _one_of(
        "notepad.exe", "LedgerView.exe", "CinderPlayer.exe", "AlderSync.exe", "explorer.exe"
    ),
    "Attempts": _number(2, 9),
    "Attachment": _one_of("invoice-2291.pdf", "photos (12).zip", "Møtereferat.docx"),
    "Command": _one_of(
        "Get-Service", "Get-ChildItem -Recurse", "Restart-Service Spooler", "Get-Date"
    ),
    "Computer": lambda dice: COMPUTER,
    "Count": _number(3, 4800),
    "Date": _date,
    "Device": _one_of(
        r"USB\VID_0BDA&PID_8153\000001", r"PCI\VEN_8086&DEV_15BE\3&11583659&0&FE",
        r"HID\VID_046D&PID_C52B\8&12&0&0", r"USBSTOR\DISK&VEN_LANTERN\AA0042",
    ),
    "Disk": _one_of(r"\Device\Harddisk0\DR0", r"\Device\Harddisk1\DR1"),
    "Document": _one_of(
        "Angebot für Müller & Söhne.odt", "見積書 11月.xlsx", "Смета на ремонт.docx", "תקציב.xlsx",
        "عقد الإيجار.pdf", "Τιμολόγιο.pdf", "holiday 🏔.jpg", "notes <draft>.txt", "अनुबंध.pdf",
    ),
    "Driver": _one_of("rt640x64.inf", "usbstor.inf", "wacomhid.inf", "lantern_probe.inf"),
    "Duration": _number(2, 900),
    "ErrorCode": _one_of("0x80070005", "0x800706ba", "0x80070020", "0xc0000005", "0x8024402c"),
    "Exception": _one_of("0xc0000005", "0xc0000409", "0xe0434352"),
    "Folder": _one_of(r"C:\Users\anna\Documents", r"C:\Users\bjarne\Pictures", r"D:\Shared"),
    "Host": _one_of("time.example.org", "updates.example.net", "sync.example.com", "hedgerow.local"),
    "LogonId": _hex_number(0x3E000, 0x9FFFFF),
    "LogonType": _one_of("2", "3", "5", "5", "7", "11"),
    "Module": _one_of("ntdll.dll", "KERNELBASE.dll", "cinder_codec.dll", "LedgerView.exe"),
    "Network": _one_of("Fjordlys Gjest", "Kestrel-5G", "Café Ørn", "Хлеб и кофе"),
    "Offset": _hex_number(0x1000, 0xFFFFF),
    "Pages": _number(1, 40),
    "Path": _one_of(
        r"C:\Windows\System32\svchost.exe", r"C:\Program Files\Alder\AlderSync.exe",
        r"C:\Windows\explorer.exe", r"C:\Program Files\Ledger & Sons\LedgerView.exe",
    ),
    "Percent": _number(3, 99),
    "Policy": _one_of("Registry", "Security", "Folder Redirection", "Scripts", "Drive Maps"),
    "Port": _number(1024, 65535),
    "Printer": _one_of("Upstairs Laser", "Brother at reception", "Microsoft Print to PDF"),
    "Privileges": _one_of(
        "SeBackupPrivilege\n\t\t\tSeRestorePrivilege", "SeDebugPrivilege",
        "SeSecurityPrivilege\n\t\t\tSeTakeOwnershipPrivilege\n\t\t\tSeLoadDriverPrivilege",
    ),
    "Process": _hex_number(0x1A0, 0x3F00),
    "Product": _one_of(
        "Ledger & Sons 4.2", "Cinder Player", "Alder Sync 2.8", "Lantern Probe Tools"
    ),
    "Reason": _one_of("the server did not answer", "access was denied", "the disk is full"),
    "Service": _one_of(
        "Print Spooler", "Windows Update", "Background Intelligent Transfer Service",
        "Windows Search", "Harbor Backup Agent", "Alder Sync", "Bluetooth Support Service",
        "Device Setup Manager", "Software Protection", "Windows Modules Installer",
    ),
    "Share": _one_of(r"\\HEDGEROW\accounts", r"\\HEDGEROW\photos", r"\\KESTREL\IPC$"),
    "Sid": _one_of(*USER_SIDS.values(), SYSTEM_SID),
    "Size": _number(12, 98000),
    "StartType": _one_of("auto start", "demand start", "disabled"),
    "State": _one_of("running", "stopped"),
    "Station": _one_of("KESTREL", "HEDGEROW", "LAPTOP-BJARNE", "-"),
    "Status": _one_of("0xc000006d", "0xc0000064", "0xc000006a", "0xc0000234"),
    "Task": _one_of(
        r"\Alder\Nightly Sync", r"\Harbor\Backup", r"\Microsoft\Windows\Defrag\ScheduledDefrag",
        r"\Microsoft\Windows\Time Synchronization\SynchronizeTime", r"\Ledger & Sons\Month end",
    ),
    "Update": _one_of(
        "Security Intelligence Update (version 1.437.201.0)", "Cumulative Update (KB5066201)",
        "Printer driver 6.1.20", "Servicing Stack Update (KB5065010)",
    ),
    "User": _one_of("anna", "bjarne"),
    "Version": _one_of("2.8.14.0", "4.2.0.118", "10.0.19041.4648", "1.0.3.7"),
    "Volume": _one_of("C:", "D:", r"\\?\Volume{3c1e0a52-0000-0000-0000-100000000000}"),
}


def make_values(names, dice):
    """Returns the values of an event as a list of (name, text) in the order of the names."""
    return [(name, MAKERS[name](dice)) for name in names.split()]
