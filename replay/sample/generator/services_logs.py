"""The events of the application and service logs."""

from .row import CRITICAL, ERROR, INFORMATION, VERBOSE, WARNING, Burst, Log, Row

_TASKS = "Microsoft-Windows-TaskScheduler"
_POLICY = "Microsoft-Windows-GroupPolicy"
_WLAN = "Microsoft-Windows-WLAN-AutoConfig"
_DEFENDER = "Microsoft-Windows-Windows Defender"
_PRINT = "Microsoft-Windows-PrintService"
_UPDATE = "Microsoft-Windows-WindowsUpdateClient"
_BACKUP = "Harbor-Backup-Agent"
_CINDER = "Cinder-Media"
_FJORDLYS = "Fjordlys-Drift"
_ALDER = "Alder-Sync"

LOGS = (
    Log("Microsoft-Windows-TaskScheduler/Operational", 90244, 220, "2025-11-03", "2025-11-14", (
        Burst((
            Row(_TASKS, 107, INFORMATION, "Task", "The task {Task} was started on a schedule.",
                task=107),
            Row(_TASKS, 100, INFORMATION, "Task User",
                "The task {Task} began for {User}.", task=100),
            Row(_TASKS, 200, INFORMATION, "Task Path", "{Path} was launched for the task {Task}.",
                task=200),
            Row(_TASKS, 102, INFORMATION, "Task User", "The task {Task} finished for {User}.",
                task=102),
        ), weight=10),
        Row(_TASKS, 140, INFORMATION, "Task User", "{User} changed the task {Task}.", 4, task=140),
        Row(_TASKS, 101, ERROR, "Task ErrorCode",
            "The task {Task} could not be started ({ErrorCode}).",
            3, task=101),
        Row(_TASKS, 322, WARNING, "Task",
            "The task {Task} is still running and was not started again.",
            4, task=322),
        Row(_TASKS, 710, VERBOSE, "Task", None, 3),  # the text of this one is missing
    )),
    Log("Microsoft-Windows-GroupPolicy/Operational", 7718, 130, "2025-10-27", "2025-11-14", (
        Row(_POLICY, 4004, INFORMATION, "User Count",
            "Manual processing of policy began for {User}.", 4),
        Row(_POLICY, 4016, INFORMATION, "Policy Count",
            "Processing of the extension {Policy} began.", 9),
        Row(_POLICY, 5016, INFORMATION, "Policy Duration",
            "The extension {Policy} finished in {Duration} milliseconds.", 9),
        Row(_POLICY, 6016, WARNING, "Policy Reason",
            "The extension {Policy} was skipped because {Reason}.", 2),
        Row(_POLICY, 7016, ERROR, "Policy ErrorCode",
            "The extension {Policy} ended with the error {ErrorCode}.", 1),
        Row(_POLICY, 5320, INFORMATION, "", "Checking for policy changes finished.", 4),
        Row(_POLICY, 9001, VERBOSE, "Policy Count",
            "{Count} settings of {Policy} were compared.", 5),
    )),
    Log("Microsoft-Windows-WLAN-AutoConfig/Operational", 3120, 90, "2025-10-01", "2025-11-14", (
        Burst((
            Row(_WLAN, 8000, INFORMATION, "Adapter Network", "Connecting {Adapter} to {Network}.",
                task=24010),
            Row(_WLAN, 8001, INFORMATION, "Adapter Network", "{Adapter} is connected to {Network}.",
                task=24010),
        ), weight=6),
        Row(_WLAN, 8002, ERROR, "Adapter Network Reason",
            "{Adapter} could not connect to {Network}: {Reason}.", 2, task=24010),
        Row(_WLAN, 8003, INFORMATION, "Adapter Network",
            "{Adapter} was disconnected from {Network}.",
            4, task=24010),
        Row(_WLAN, 11006, ERROR, "Adapter Network ErrorCode",
            "Wireless security failed on {Adapter} ({ErrorCode}).", task=24012),
    )),
    Log("Microsoft-Windows-Windows Defender/Operational", 905, 60, "2025-10-10", "2025-11-14", (
        Row(_DEFENDER, 1000, INFORMATION, "User Count",
            "A scan of {Count} items began for {User}.", 4),
        Row(_DEFENDER, 1001, INFORMATION, "User Duration",
            "The scan for {User} finished after {Duration} seconds.", 4),
        Row(_DEFENDER, 1116, WARNING, "Folder Attachment User",
            "Unwanted software was found.\n\n\tFile:\t\t{Folder}\\{Attachment}\n\tUser:\t\t{User}\n"
            "\tSeverity:\t\tModerate\n\tAction:\t\tQuarantine"),
        Row(_DEFENDER, 2000, INFORMATION, "Version",
            "The signatures were updated to {Version}.", 6),
        Row(_DEFENDER, 2001, ERROR, "Host ErrorCode",
            "The signatures could not be updated from {Host} ({ErrorCode}).", 1),
        Row(_DEFENDER, 5007, INFORMATION, "Path Count",
            "The configuration was changed by {Path}.", 3),
    )),
    Log("Microsoft-Windows-WindowsUpdateClient/Operational", 1440, 70, "2025-10-02", "2025-11-14", (
        Row(_UPDATE, 26, INFORMATION, "Count", "{Count} updates were found.", 6),
        Row(_UPDATE, 41, INFORMATION, "Update", "An update was downloaded: {Update}", 5),
        Row(_UPDATE, 25, ERROR, "Host ErrorCode", "The search at {Host} failed ({ErrorCode}).", 2),
        Row(_UPDATE, 40, INFORMATION, "Percent", "The installation stands at {Percent} %.", 3),
    )),
    Log("Microsoft-Windows-PrintService/Admin", 66, 40, "2025-09-25", "2025-11-11", (
        Row(_PRINT, 372, ERROR, "Count User Printer Pages",
            "Document {Count} of {User} could not be printed on {Printer}: "
            "{Pages} pages are lost.", 3),
        Row(_PRINT, 315, ERROR, "Printer Share ErrorCode",
            "The printer {Printer} could not be shared as {Share} ({ErrorCode}).", 2),
        Row(_PRINT, 808, CRITICAL, "Module ErrorCode",
            "The print service could not load {Module} ({ErrorCode}). Printing is not possible."),
        Row(_PRINT, 363, WARNING, "Printer", None),  # the text of this one is missing
    )),
    Log("Harbor-Backup-Agent/Operational", 4001, 90, "2025-10-20", "2025-11-14", (
        Burst((
            Row(_BACKUP, 101, INFORMATION, "Folder", "The backup of {Folder} started."),
            Row(_BACKUP, 110, VERBOSE, "Folder Count", "{Count} files of {Folder} were compared."),
            Row(_BACKUP, 102, INFORMATION, "Folder Size", "{Size} MB of {Folder} were copied."),
        ), weight=6),
        Row(_BACKUP, 211, WARNING, "Folder Percent",
            "The target has {Percent} % of its space left for {Folder}.", 3),
        Row(_BACKUP, 301, ERROR, "Share ErrorCode", "The target {Share} is gone ({ErrorCode}).", 2),
    )),
    Log("Harbor Backup (Nightly)", 12, 24, "2025-10-20", "2025-11-13", (
        Row(_BACKUP, 150, INFORMATION, "Count Size",
            "Last night {Count} files were saved, {Size} MB.", 5),
        Row(_BACKUP, 350, ERROR, "Reason", "Last night nothing was saved because {Reason}."),
    )),
    # Cinder Media has no message file: none of its events has a message.
    Log("Cinder-Media/Operational", 640, 40, "2025-10-05", "2025-11-12", (
        Row(_CINDER, 1, INFORMATION, "Attachment User", None, 5),
        Row(_CINDER, 2, VERBOSE, "Percent Duration", None, 3),
        Row(_CINDER, 3, WARNING, "Module", None, 2),
    )),
    # The messages are in the language of the current user.
    Log("Alder-Sync/Operational", 318, 60, "2025-10-16", "2025-11-14", (
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "“{Document}” was copied to {Count} devices.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "„{Document}“ wurde auf {Count} Geräte übertragen.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "« {Document} » a été copié sur {Count} appareils.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count", "「{Document}」を {Count} 台に同期しました。", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "Файл «{Document}» передан на {Count} устройств.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "Το «{Document}» αντιγράφηκε σε {Count} συσκευές.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count", "“{Document}”已同步到 {Count} 台设备。", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "\u200fתם סנכרון \u200e{Document}\u200f ל־{Count} התקנים.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "\u200fتمت مزامنة \u2066{Document}\u2069 على {Count} من الأجهزة.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "“{Document}” को {Count} डिवाइस पर भेजा गया।", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count", "“{Document}” 파일을 {Count}대에 동기화했습니다.", 2),
        Row(_ALDER, 1, INFORMATION, "Document Count",
            "คัดลอก “{Document}” ไปยัง {Count} เครื่องแล้ว", 2),
        Row(_ALDER, 7, WARNING, "Document User",
            "„{Document}“ wurde von {User} an zwei Orten geändert. Beide Fassungen wurden "
            "aufbewahrt.\n\nBitte vergleichen und die überholte Fassung löschen.", 2),
        Row(_ALDER, 7, WARNING, "Document User",
            "「{Document}」は 2 か所で変更されました。両方の版を保存しています。", 2),
        Row(_ALDER, 9, ERROR, "Document ErrorCode",
            "Не удалось передать «{Document}»: {ErrorCode}.\nПроверьте свободное место на диске.", 2),
        Row(_ALDER, 9, ERROR, "Document ErrorCode",
            "\u200fتعذرت مزامنة \u2066{Document}\u2069 (\u2066{ErrorCode}\u2069).", 1),
        Row(_ALDER, 15, VERBOSE, "Document Duration", "🗂 {Document} · {Duration} ms"),
    )),
    Log("Fjordlys-Drift/Admin", 2201, 45, "2025-10-12", "2025-11-14", (
        Row(_FJORDLYS, 10, INFORMATION, "Percent",
            "Strømforbruket ligger på {Percent} % av normalen.", 5),
        Row(_FJORDLYS, 20, WARNING, "Address", "Måleren på adressen {Address} svarer ikke.", 3),
        Row(_FJORDLYS, 30, ERROR, "ErrorCode Share",
            "Avlesningen kunne ikke lagres på {Share}: {ErrorCode}.", 1),
    )),
)
