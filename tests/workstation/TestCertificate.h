// SPDX-License-Identifier: Apache-2.0

#pragma once

// A certificate that nobody uses, as a PEM file holds it.
constexpr char certificate[] = "-----BEGIN CERTIFICATE-----\n"
                               "MIIDATCCAemgAwIBAgIUNxgnz9NouGsrd1SAMKooEppNji0wDQYJKoZIhvcNAQEL\n"
                               "BQAwDzENMAsGA1UEAwwEdGVzdDAgFw0yNjExMjIxMzI0MDRaGA8yMTI2MTAyOTEz\n"
                               "MjQwNFowDzENMAsGA1UEAwwEdGVzdDCCASIwDQYJKoZIhvcNAQEBBQADggEPADCC\n"
                               "AQoCggEBAMLjXuW8X/U8mgxAkyrQ0oC141Q+YNFFfWHGksTbNiNhZ/wgSY+CMtZh\n"
                               "A1Zb81iEKeUHLc2JP47MpcImRONra1G2HsWOnWTxMsXuS+j4p8PE+CbP++Euy6lT\n"
                               "ycSUhgXWokB8BdcI4WDaHM54E/P35KI4h7XKpZ1Vq3GMKEBQAywIXX7zNnfJpKOd\n"
                               "VkNm9pJQLIYBYulncJafI50atfIgatppkBBRuwFoIBtMyY6lKi29eP6y7suZ0PWl\n"
                               "YSWCBMsZ6RCgI9LIf9EWKH8rSnJwTg/b3okYZG+iSD8C6iVCg52LmcCkUDbo6j0K\n"
                               "C/NvIYHCxZLLe2HwWFrtcIhUwVuZLNsCAwEAAaNTMFEwHQYDVR0OBBYEFHPgBKCI\n"
                               "SCBZ+aoYcm6itKLa3RAGMB8GA1UdIwQYMBaAFHPgBKCISCBZ+aoYcm6itKLa3RAG\n"
                               "MA8GA1UdEwEB/wQFMAMBAf8wDQYJKoZIhvcNAQELBQADggEBAAhDSyno8tNSImce\n"
                               "+VtAvTDbu74NowWxUQHJqEn2/SFEIE52aIWHF6Tv+yvOI6f+oPAWplBSRVZpThFY\n"
                               "4S5aJIhJ+ghifK7eO9c2VdED0B5gK7QYw/Q2jsOTHz3MgDUJZqlAvA9S7Yx+By7r\n"
                               "WaIYxkjiJD2nrD1zTMcMyv3MBdA8xRXMC63N5z025q8S54fPX8lg3Wlz0CVtaiBH\n"
                               "/ULQOW8PRp5aATo6HXdgoobCVjtiXvIRSb/9ymiQ+/XFql0RZxUJqvjriJj7a7oD\n"
                               "FHcgBxMKS2twksu1/PXEbRsap4ml9SIryBAECsrPMFbEOsRMwpLCzMn4er6QR32/\n"
                               "DnYSjE4=\n"
                               "-----END CERTIFICATE-----\n";
