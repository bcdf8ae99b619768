#pragma once

// The ids of the rows of panel_messages.cpp that the program names in its code; the English
// words follow each one. The catalogue holds a row for every one of them (its table checks
// that when it is compiled).
namespace panelmsg {

inline constexpr const char run[] = "CVCP-000001";     // Run
inline constexpr const char stop[] = "CVCP-000002";    // Stop
inline constexpr const char days[] = "CVCP-000003";    // d. :
inline constexpr const char hours[] = "CVCP-000004";   // h. :
inline constexpr const char minutes[] = "CVCP-000005"; // m. :
inline constexpr const char seconds[] = "CVCP-000006"; // s.
inline constexpr const char running[] = "CVCP-000009"; // Running
inline constexpr const char stopped[] = "CVCP-000010"; // Stopped
inline constexpr const char failed[] = "CVCP-000011";  // Failed
inline constexpr const char reportBeingCollected[] =
    "CVCP-004103"; // %1: collecting the report for support

// The server keeps stopping, and its error log doesn't say why
inline constexpr const char failedWithoutCause[] = "CVCP-000012";
// Port %1 is held
inline constexpr const char portHeldStatus[] = "CVCP-000013";
// The server can't start: port %1 is held.
inline constexpr const char portHeld[] = "CVCP-006106";
// It is held by %1 (process %2).
inline constexpr const char portHeldByProgram[] = "CVCP-006107";
// It is held by the Windows service "%1".
inline constexpr const char portHeldByService[] = "CVCP-006108";
// It is held by the Windows HTTP service (http.sys).
inline constexpr const char portHeldByHttpService[] = "CVCP-006109";
// It is reserved by Windows.
inline constexpr const char portReserved[] = "CVCP-006110";

inline constexpr const char hostVersionLabel[] = "CVCP-005001";    // Host application version:
inline constexpr const char libraryVersionLabel[] = "CVCP-005002"; // Library version:
inline constexpr const char portLabel[] = "CVCP-005004";           // Port:
inline constexpr const char addressLabel[] = "CVCP-005005";        // Address:
inline constexpr const char serverStatusLabel[] = "CVCP-005006";   // Server status:
inline constexpr const char logLevelErrors[] = "CVCP-005201";      // Errors
inline constexpr const char logLevelInformation[] = "CVCP-005202"; // Information
inline constexpr const char logLevelVerbose[] = "CVCP-005203";     // Verbose
inline constexpr const char panelNotRun[] = "CVCP-006001";         // Failed to run Control Panel
inline constexpr const char menuNotCreated[] =
    "CVCP-006002"; // Error creating control panel menu element
inline constexpr const char widgetNotCreated[] =
    "CVCP-006006"; // Error creating control panel widget element
inline constexpr const char labelNotCreated[] =
    "CVCP-006007"; // Error creating control panel label element
inline constexpr const char buttonNotCreated[] =
    "CVCP-006008"; // Error creating control panel button element
inline constexpr const char windowNotRegistered[] =
    "CVCP-006009"; // Error registering control panel window
inline constexpr const char actionFailed[] =
    "CVCP-006010"; // An error occurred during the %1 process of %2
inline constexpr const char startAction[] = "CVCP-006011"; // startup
inline constexpr const char stopAction[] = "CVCP-006012";  // stop
inline constexpr const char layoutNotRead[] =
    "CVCP-006013"; // Error data initializing of control panel
inline constexpr const char serverNotStarted[] = "CVCP-006014"; // Failed to run application
inline constexpr const char serverNotStopped[] = "CVCP-006015"; // Failed to stop application
inline constexpr const char internalError[] = "CVCP-006016";    // Internal error
inline constexpr const char logsNotOpened[] = "CVCP-006017"; // Failed to open directory with logs
inline constexpr const char serverFilesMissing[] =
    "CVCP-006018"; // Files needed for running/stopping %1 application are missed
inline constexpr const char windowNotCreated[] =
    "CVCP-006019"; // Error creating control panel window
inline constexpr const char syslinkNotCreated[] =
    "CVCP-006024"; // Error creating control panel syslink element
inline constexpr const char comboboxNotCreated[] =
    "CVCP-006025"; // Error creating control panel combobox element
inline constexpr const char logLevelAction[] = "CVCP-006026"; // change loglevel
inline constexpr const char checkboxNotCreated[] =
    "CVCP-006027"; // Error creating control panel checkbox element
inline constexpr const char folderNotWritable[] =
    "CVCP-006028"; // The server can't be started from the folder "%1": its name can't be written in
                   // the system's code page %2, and the folder has no short name. ...
inline constexpr const char configNotOpened[] = "CVCP-006101"; // Can not open the nginx config-file
inline constexpr const char portAutoselectOff[] =
    "CVCP-006105"; // You have disabled automatic port selection at server start.\nFor correct work,
                   // enter free port in the configuration file and restart server.
inline constexpr const char mailNotLaunched[] = "CVCP-007001"; // Error launching the email-app
inline constexpr const char mailClientUnsupported[] =
    "CVCP-007002"; // %1 is not supported. Please change the default email application.
inline constexpr const char installPathLine[] = "CVCP-008001"; // Install path:
inline constexpr const char userLine[] = "CVCP-008002";        // User:
inline constexpr const char adminMark[] = "CVCP-008003";       //  (admin)
inline constexpr const char osInfoLine[] = "CVCP-008004";      // OS info: %1 %2 x%3%4%5
inline constexpr const char servicePackPart[] = "CVCP-008005"; // , spVersion: %1
inline constexpr const char antivirusLine[] = "CVCP-008006";   // Antivirus: %1, state: %2
inline constexpr const char proxyLines[] =
    "CVCP-008007"; // Proxy settings (%1):\n    Server: %2\n    Override: %3
inline constexpr const char browsersLine[] = "CVCP-008008";      // Browsers:
inline constexpr const char domainUnavailable[] = "CVCP-008009"; // Domain name %1 is not available
inline constexpr const char domainAvailable[] =
    "CVCP-008010";                                 // Domain name %1 is available from:\n    %2
inline constexpr const char on[] = "CVCP-008011";  // on
inline constexpr const char off[] = "CVCP-008012"; // off
inline constexpr const char defaultMark[] = "CVCP-008013"; //  (default)

inline constexpr const char* named[] = {run,
                                        stop,
                                        days,
                                        hours,
                                        minutes,
                                        seconds,
                                        running,
                                        stopped,
                                        reportBeingCollected,
                                        failed,
                                        failedWithoutCause,
                                        portHeldStatus,
                                        portHeld,
                                        portHeldByProgram,
                                        portHeldByService,
                                        portHeldByHttpService,
                                        portReserved,
                                        hostVersionLabel,
                                        libraryVersionLabel,
                                        portLabel,
                                        addressLabel,
                                        serverStatusLabel,
                                        logLevelErrors,
                                        logLevelInformation,
                                        logLevelVerbose,
                                        panelNotRun,
                                        menuNotCreated,
                                        widgetNotCreated,
                                        labelNotCreated,
                                        buttonNotCreated,
                                        windowNotRegistered,
                                        actionFailed,
                                        startAction,
                                        stopAction,
                                        layoutNotRead,
                                        serverNotStarted,
                                        serverNotStopped,
                                        internalError,
                                        logsNotOpened,
                                        serverFilesMissing,
                                        windowNotCreated,
                                        syslinkNotCreated,
                                        comboboxNotCreated,
                                        logLevelAction,
                                        checkboxNotCreated,
                                        folderNotWritable,
                                        configNotOpened,
                                        portAutoselectOff,
                                        mailNotLaunched,
                                        mailClientUnsupported,
                                        installPathLine,
                                        userLine,
                                        adminMark,
                                        osInfoLine,
                                        servicePackPart,
                                        antivirusLine,
                                        proxyLines,
                                        browsersLine,
                                        domainUnavailable,
                                        domainAvailable,
                                        on,
                                        off,
                                        defaultMark};

} // namespace panelmsg
