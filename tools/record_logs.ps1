<#
.SYNOPSIS
Records the event logs of this computer for the replay service.

.DESCRIPTION
Writes channels.xml and, for each channel with events, a file with the output of wevtutil. Skips
channels that cannot be read and lists them at the end. Run it as administrator: otherwise some
channels, including Security, are recorded as denied.
The recording contains all data of the logs. Review it before you share it.

.EXAMPLE
powershell -ExecutionPolicy Bypass -File record_logs.ps1 -Folder C:\recording

.EXAMPLE
powershell -ExecutionPolicy Bypass -Command .\record_logs.ps1 C:\recording -Channel System, Micro*
#>
[CmdletBinding()]
param(
    # The directory to create. It must not exist.
    [Parameter(Mandatory = $true)] [string] $Folder,
    # The channels whose events are recorded. channels.xml always lists all channels.
    [string[]] $Channel = '*'
)

Set-StrictMode -Version 2
$ErrorActionPreference = 'Stop'

$Utf8 = New-Object System.Text.UTF8Encoding $false
$Session = [System.Diagnostics.Eventing.Reader.EventLogSession]::GlobalSession
$LeftOut = New-Object System.Collections.Generic.List[string]

# The names of the types in wevtutil.
$TypeNames = @{
    Administrative = 'Admin'
    Operational    = 'Operational'
    Analytical     = 'Analytic'
    Debug          = 'Debug'
}

# Characters that XML does not allow.
$NotXml = '[\x00-\x08\x0B\x0C\x0E-\x1F]'

function Get-ChannelName {
    $names = [string[]] @($Session.GetLogNames())
    [Array]::Sort($names, [StringComparer]::Ordinal)
    $names
}

# Returns the number of events, or nothing if access is denied. A channel without a log has 0 events.
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

# Returns the channel's line of channels.xml.
function Format-Channel([string] $Name, [bool] $Denied) {
    $configuration = New-Object System.Diagnostics.Eventing.Reader.EventLogConfiguration $Name
    $access = if ($Denied) { ' access="denied"' } else { '' }
    '  <channel name="{0}" type="{1}" owningPublisher="{2}" enabled="{3}"{4}/>' -f `
        (ConvertTo-Attribute $Name), `
        $TypeNames[$configuration.LogType.ToString()], `
        (ConvertTo-Attribute $configuration.OwningProviderName), `
        $configuration.IsEnabled.ToString().ToLowerInvariant(), $access
}

# Copies the output of wevtutil in blocks, because a log may have gigabytes. A pipeline would split and
# join the lines and change their ends.
function Copy-Event([string] $Name, [System.IO.TextWriter] $Writer) {
    $start = New-Object System.Diagnostics.ProcessStartInfo
    $start.FileName = Join-Path ([Environment]::SystemDirectory) 'wevtutil.exe'
    $start.Arguments = 'qe "{0}" /f:RenderedXml /e:Events /uni:true' -f $Name
    $start.UseShellExecute = $false
    $start.RedirectStandardOutput = $true
    $start.StandardOutputEncoding = [System.Text.Encoding]::Unicode
    $process = [System.Diagnostics.Process]::Start($start)
    $piece = New-Object char[] 65536
    while (($length = $process.StandardOutput.Read($piece, 0, $piece.Length)) -gt 0) {
        $text = [string]::new($piece, 0, $length)
        $Writer.Write(($text -replace $NotXml, [string] [char] 0xFFFD))
    }
    $process.WaitForExit()
    if ($process.ExitCode -ne 0) {
        throw "wevtutil ended with $($process.ExitCode)"
    }
}

# Writes a channel's file. Deletes it if it is incomplete.
function Write-Event([string] $Name) {
    $file = Join-Path $Folder ($Name.Replace('/', '%4') + '.xml')
    $writer = New-Object System.IO.StreamWriter $file, $false, $Utf8
    $whole = $false
    try {
        Copy-Event $Name $writer
        $whole = $true
    } finally {
        $writer.Dispose()
        if (-not $whole) {
            Remove-Item -LiteralPath $file
        }
    }
    Write-Host $Name
}

function Test-Wanted([string] $Name) {
    @($Channel | Where-Object { $Name -like $_ }).Count -gt 0
}

# Runs a step for one channel. A failure skips the channel and does not end the recording.
function Invoke-Step([string] $What, [scriptblock] $Step) {
    try {
        & $Step
    } catch {
        $LeftOut.Add("$What`: $($_.Exception.Message)")
    }
}

$names = Get-ChannelName
$Folder = (New-Item -ItemType Directory -Path $Folder).FullName
$lines = foreach ($name in $names) {
    Invoke-Step $name {
        $count = Get-EventCount $name
        Format-Channel $name ($null -eq $count)
        if ($count -gt 0 -and (Test-Wanted $name)) {
            Invoke-Step "the events of $name" { Write-Event $name }
        }
    }
}
$document = @('<?xml version="1.0" encoding="UTF-8"?>', '<channels>') + $lines + '</channels>', ''
[System.IO.File]::WriteAllText((Join-Path $Folder 'channels.xml'), ($document -join "`n"), $Utf8)

Write-Host "Recorded $(@($lines).Count) of $(@($names).Count) channels in $Folder."
foreach ($what in $LeftOut) {
    Write-Warning "Left out: $what"
}
