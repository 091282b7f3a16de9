#include "host/config_keys.h"

namespace tarlo::host {

namespace {

using L = WireLimits;
using C = Config;

const ConfigKey kKeys[] = {
    {"server", "listen", &C::listen,
     "Address and port. Anything but loopback is open to the network."},
    {"server", "threads", &L::threads, "Threads that serve requests.", 2, 256},
    {"server", "running", &L::running,
     "Operations at a time; with sign_ins fewer than threads, so that files and health checks find "
     "one.",
     1, 255},
    {"server", "sign_ins", &L::signIns, "Sign-ins at a time, beside the operations.", 1, 255},
    {"server", "operations_per_session", &L::operationsPerSession,
     "Operations of one session that run or wait; a further one gets 429.", 1, 100'000},
    {"server", "operations_per_user", &L::operationsPerUser,
     "The same of one user, in all sessions.", 1, 100'000},
    {"server", "queued", &L::queued,
     "Requests that may wait for their turn; a further one gets 503.", 0, 100'000},
    {"server", "queue_seconds", &L::queueTime, "Longest wait for a turn.", 0.1, 600},
    {"server", "drain_seconds", &L::drainTime,
     "At a stop: how long running requests may still take.", 0, 600},
    {"server", "operation_seconds", &C::operationTime,
     "A request that takes longer is reported in the log.", 0.1, 3600},

    {"limits", "header_bytes", &L::headerBytes,
     "Request line, headers, chunk extensions and trailers of a request together.", 1024, 1 << 20},
    {"limits", "body_bytes", &L::bodyBytes, "Body of a request.", 1024, 1 << 30},
    {"limits", "response_bytes", &L::responseBytes, "A page that is kept until it is complete.",
     65'536, 4e9},
    {"limits", "connections", &L::connections, "Open connections; a further one gets 503.", 1,
     100'000},
    {"limits", "idle_seconds", &L::idleTime, "Between requests of one connection.", 0.1, 3600},
    {"limits", "header_seconds", &L::headerTime,
     "From the first byte of a request to the end of its headers.", 0.1, 600},
    {"limits", "body_seconds", &L::bodyTime, "For the whole body of a request.", 0.1, 3600},
    {"limits", "write_seconds", &L::writeTime, "For one write to a client, of at most 256 KB.", 0.1,
     3600},
    {"limits", "least_write_bytes_per_second", &L::leastWriteBytesPerSecond,
     "A client that takes an answer more slowly, on the average of five seconds, is dropped. 0 "
     "lets "
     "it take the time of its writes.",
     0, 1e9},

    {"limits", "row_bytes", &C::rowBytes,
     "Rows that one operation may hold in memory; beyond it the answer is that the result is too "
     "large.",
     1 << 20, 4e9},
    {"limits", "row_bytes_in_all", &C::rowBytesInAll,
     "Rows that all operations together may hold; beyond it a further one gets 503.", 1 << 20,
     64e9},
    {"limits", "temporary_bytes", &C::temporaryBytes,
     "One temporary file of a statement that sorts or groups.", 1 << 20, 1e12},
    {"limits", "temporary_bytes_in_all", &C::temporaryBytesInAll,
     "Temporary files of all statements together.", 1 << 20, 1e12},
    {"limits", "statement_seconds", &C::statementTime, "Longest run of one statement.", 0.1, 3600},

    {"tls", "certificate", &C::tlsCertificate,
     "PEM file: the certificate, and behind it those that vouch for it. With the key: the server "
     "speaks HTTPS. Read again at SIGHUP."},
    {"tls", "key", &C::tlsKey, "PEM file: the certificate's key, without a password."},

    {"database", "connection", &C::database,
     "Connection string; sqlite:FILE is the embedded database."},
    {"database", "reserve_bytes", &C::diskReserve,
     "With less room than this on its disk the server says that it is not ready.", 0, 1e15},

    {"housekeeping", "every_minutes", &C::housekeepingPause,
     "Pause between two rounds that remove what has had its time. 0: nothing is removed.", 0,
     10'080},
    {"housekeeping", "drawn_list_days", &C::drawnGridLife,
     "How long the statements of drawn lists are kept, which the task panels read. Longer than a "
     "session lasts. 0: for ever.",
     0, 36'500},
    {"housekeeping", "ended_days", &C::endedLife,
     "How long sign-in links and API tokens are kept after they have ended.", 0, 36'500},
    {"housekeeping", "operation_log_days", &C::operationLogLife,
     "How long rows of the operation log are kept. 0: for ever.", 0, 36'500},

    {"pages", "charset", &C::charset, "gb2312 or utf-8: how pages are sent."},
    {"pages", "address_keyword", &C::virtualWebKeyWord,
     "The site's own address; requests that come from elsewhere are refused. Empty accepts every "
     "request that has a "
     "referring address."},
    {"pages", "designer_extras", &C::designerExtras,
     "In the wizard: the statement and its first rows in the preview, the reason of a refusal, and "
     "a "
     "note when somebody else has changed the scheme. Off: the platform's own pages and nothing "
     "else."},
    {"pages", "readable_tables", &C::readableTables,
     "Tables beside those of the dictionary that schemes and controls may read, the platform's own "
     "included."},
    {"pages", "statements_by_address", &C::statementsByUrl,
     "Let the preview of a caller's cascade run any SELECT that an address names. Off: only those "
     "of stored control schemes."},
    {"pages", "designers_only", &C::designersOnly,
     "Managers, wizards and what they send are for users whose menu has one of the managers. Off: "
     "for everybody who is signed in."},
    {"pages", "start_page", &C::startPage, "Where a sign-in leads."},

    {"session", "idle_minutes", &C::sessionIdle,
     "A session ends after this time without a request.", 1, 10'080},
    {"session", "most", &C::sessions,
     "Sessions kept; beyond it the one that was idle longest goes.", 1, 1e6},
    {"session", "check_seconds", &C::sessionCheck,
     "How often a session looks whether its user is still there, with the same name, rank and "
     "password; 0 at every request.",
     0, 3600},
    {"session", "secure_cookie", &C::secureCookie,
     "Send the session cookie over HTTPS only; turn it on behind a TLS proxy. Over the server's "
     "own "
     "TLS it is so always."},

    {"sign_in", "attempts", &C::signInAttempts,
     "Failures of one user or one address within the window.", 1, 1000},
    {"sign_in", "window_seconds", &C::signInWindow,
     "The window of the failures, and the pause that follows.", 1, 86'400},
    {"sign_in", "link_seconds", &C::linkLife, "How long a one-time sign-in link can be used.", 1,
     86'400},
    {"sign_in", "administrators", &C::administrators, "Sign-in names of the administrators."},
    {"sign_in", "trusted_header", &C::trustedHeader,
     "Header in which a reverse proxy names the user. Empty turns it off."},
    {"sign_in", "trusted_addresses", &C::trustedAddresses,
     "Addresses of the proxies that may send it."},

    {"mail", "server", &C::mailServer,
     "smtp://HOST:PORT or smtps://HOST:PORT. Empty: no mail is sent."},
    {"mail", "user", &C::mailUser,
     "User of the mail server; empty for a server that asks for none."},
    {"mail", "password", &C::mailPassword,
     "Its password. It is sent over an encrypted connection only."},
    {"mail", "seconds", &C::mailTime, "Longest time for one message.", 1, 600},
    {"mail", "sender", &C::mailSender, "Sender of payment messages."},
    {"mail", "telephone", &C::mailTelephone, "Telephone number in payment messages."},
    {"mail", "complaints_telephone", &C::mailComplaintsTelephone,
     "Telephone number for complaints in payment messages."},
    {"mail", "company", &C::mailCompany, "Company name in payment messages."},

    {"files", "transfer_folder", &C::transferFolder,
     "Files below this folder may be sent to browsers by TransferFile. Empty: none."},

    {"components", "registry", &C::registry,
     "Registry file: classes of other libraries that pages may create. Empty: none."},

    {"log", "file", &C::logFile, "Log file; empty is standard error."},
    {"log", "level", &C::logLevel, "debug, info, warning or error."},
    {"log", "access_file", &C::accessLog,
     "File of its own for a line per request; empty puts them with the others."},
};

}  // namespace

std::span<const ConfigKey> configKeys() {
  return kKeys;
}

}  // namespace tarlo::host
