<#
.SYNOPSIS
Records the event logs of this computer for the replay service.

.DESCRIPTION
Writes channels.xml, and for each channel that has events a file of what wevtutil prints of it.
Start it as administrator: otherwise some channels, Security among them, are recorded as denied.
The recording holds everything that the logs say; look at it before you hand it on.

.EXAMPLE
powershell -ExecutionPolicy Bypass -File record_logs.ps1 -Folder C:\recording

.EXAMPLE
powershell -ExecutionPolicy Bypass -Command .\record_logs.ps1 C:\recording -Channel System, Micro*
#>
[CmdletBinding()]
param(
    # The folder to write to. It must not exist.
    [Parameter(Mandatory = $true)] [string] $Folder,
    # The channels whose events are recorded. channels.xml always names all of them.
    [string[]] $Channel = '*'
)

Set-StrictMode -Version 2
$ErrorActionPreference = 'Stop'

$Utf8 = New-Object System.Text.UTF8Encoding $false
$Session = [System.Diagnostics.Eventing.Reader.EventLogSession]::GlobalSession

# How wevtutil names the types.
$TypeNames = @{
    Administrative = 'Admin'
    Operational    = 'Operational'
    Analytical     = 'Analytic'
    Debug          = 'Debug'
}

function Get-ChannelName {
    $names = [string[]] @($Session.GetLogNames())
    [Array]::Sort($names, [StringComparer]::Ordinal)
    $names
}

# The number of events, or nothing when it may not be asked. A channel without a log has none.
function Get-EventCount([string] $Name) {
    $pathType = [System.Diagnostics.Eventing.Reader.PathType]::LogName
    try {
        [long] $Session.GetLogInformation($Name, $pathType).RecordCount
    } catch [UnauthorizedAccessException] {
        $null
    } catch [System.Diagnostics.Eventing.Reader.EventLogException] {
        0
    }
}

function ConvertTo-Attribute([string] $Text) {
    [System.Security.SecurityElement]::Escape($Text)
}

function Format-Channel($Configuration, [bool] $Denied) {
    $access = if ($Denied) { ' access="denied"' } else { '' }
    '  <channel name="{0}" type="{1}" owningPublisher="{2}" enabled="{3}"{4}/>' -f `
        (ConvertTo-Attribute $Configuration.LogName), `
        $TypeNames[$Configuration.LogType.ToString()], `
        (ConvertTo-Attribute $Configuration.OwningProviderName), `
        $Configuration.IsEnabled.ToString().ToLowerInvariant(), $access
}

# What wevtutil prints, its line ends untouched: a pipeline would split and join the lines.
function Read-Event([string] $Name) {
    $start = New-Object System.Diagnostics.ProcessStartInfo
    $start.FileName = Join-Path ([Environment]::SystemDirectory) 'wevtutil.exe'
    $start.Arguments = 'qe "{0}" /f:RenderedXml /e:Events /uni:true' -f $Name
    $start.UseShellExecute = $false
    $start.RedirectStandardOutput = $true
    $start.StandardOutputEncoding = [System.Text.Encoding]::Unicode
    $process = [System.Diagnostics.Process]::Start($start)
    $text = $process.StandardOutput.ReadToEnd()
    $process.WaitForExit()
    if ($process.ExitCode -ne 0) {
        Write-Warning "$Name`: wevtutil ended with $($process.ExitCode); its events are left out."
        return ''
    }
    # Characters that XML cannot carry.
    $text -replace '[\x00-\x08\x0B\x0C\x0E-\x1F]', [string] [char] 0xFFFD
}

function Write-Event([string] $Name) {
    $text = Read-Event $Name
    if ($text) {
        $file = Join-Path $Folder ($Name.Replace('/', '%4') + '.xml')
        [System.IO.File]::WriteAllText($file, $text, $Utf8)
        Write-Host $Name
    }
}

function Test-Wanted([string] $Name) {
    @($Channel | Where-Object { $Name -like $_ }).Count -gt 0
}

$Folder = (New-Item -ItemType Directory -Path $Folder).FullName
$lines = foreach ($name in Get-ChannelName) {
    try {
        $configuration = New-Object System.Diagnostics.Eventing.Reader.EventLogConfiguration $name
    } catch {
        Write-Warning "$name`: its configuration cannot be read; it is left out."
        continue
    }
    $count = Get-EventCount $name
    Format-Channel $configuration ($null -eq $count)
    if ($count -gt 0 -and (Test-Wanted $name)) {
        Write-Event $name
    }
}
$document = @('<?xml version="1.0" encoding="UTF-8"?>', '<channels>') + $lines + '</channels>', ''
[System.IO.File]::WriteAllText((Join-Path $Folder 'channels.xml'), ($document -join "`n"), $Utf8)
