-- Passwords and one-time links of the sign-in, and tokens of the JSON interface. A link that was used
-- keeps the mark of its use, a token that was ended its end, until the housekeeping removes it.

CREATE TABLE Tarlo_Credential (
  User_ID int PRIMARY KEY,
  Hash nvarchar(200),
  ChangedAt datetime
)
GO
-- The token itself is known to the holder of the link only; ExpiresAt is UTC.
CREATE TABLE Tarlo_SignInLink (
  TokenHash nvarchar(64) PRIMARY KEY,
  User_ID int,
  ExpiresAt datetime,
  UsedBy nvarchar(64)
)
GO
CREATE TABLE Tarlo_ApiToken (
  TokenHash nvarchar(64) PRIMARY KEY,
  User_ID int,
  ExpiresAt datetime
)
GO
CREATE INDEX IX_ApiToken_User ON Tarlo_ApiToken (User_ID)
GO
