#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// "Report a problem": a new message to support in the user's own mail program, with the
// information report as its text, handed to the shell as a mailto: link.

// Mail programs that can't take such a link, by name, with the text that marks each in the
// ProgId of the default mailto handler.
extern const std::map<std::string, std::string> unsupportedMailClients;

// The address of the support service.
extern const std::string SupportMailAddress;

std::vector<std::string> supportAddresses();

// "Corvanite", a blank and the addon library's version.
std::string reportSubject();

// The link in code page 1251. Blanks become "%20" and line feeds "%0D%0A", and that is all the
// escaping there is: a carriage return stays a raw byte, and so do "&", "?", "#", "+" and "%".
std::string mailLink(const std::string& addresses, const std::string& subject,
                     const std::string& report);

// Where the mail's parts come from and where the link goes.
struct ProblemMailSources {
    // The ProgId of the default mailto handler, if one is set.
    std::function<std::optional<std::string>()> mailProgId;
    std::function<std::string()> reportText;
    std::function<std::string()> subject;
    // Hands the link, code page 1251, to the shell; the result is not looked at.
    std::function<void(const std::string&)> openLink;
};

// Refuses an unsupported mail program with a message box, or builds and opens the link. Any
// failure on the way ends in a message box; nothing leaves this function.
void composeProblemMailWith(const ProblemMailSources& sources);

ProblemMailSources systemProblemMailSources();

// "Report a problem", on the calling thread: the window's reports' lane.
void composeProblemMail();

// Gives the link to the system's shell.
void openMailLink(const std::string& link);
