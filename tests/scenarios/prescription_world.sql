-- A small clinic for the prescription scenarios: brands of one and two drugs, two forms of one brand,
-- safety rows of every status, interactions stored both ways, drug groups, diseases and patients.
-- It is loaded onto the schema database (the program's own rows only), so its codes are its own.
INSERT INTO Manufacturer (Code, Name) VALUES (1, 'CIPLA'), (2, 'SUN PHARMA'), (3, 'GSK');
INSERT INTO DosageForm (Code, Name) VALUES (1, 'TABLET'), (2, 'SYRUP'), (3, 'INJECTION');
INSERT INTO PharmaName (Code, Name) VALUES (1, 'PARACETAMOL'), (2, 'IBUPROFEN'), (3, 'AMOXYCILLIN'),
  (4, 'CLAVULANIC ACID'), (5, 'WARFARIN'), (6, 'ASPIRIN'), (7, 'METFORMIN');
INSERT INTO GroupName (Code, Name) VALUES (1, 'ANALGESICS'), (2, 'ANTIBIOTICS'), (3, 'ANTIDIABETICS');
INSERT INTO Indication (Code, Name) VALUES (1, 'FEVER'), (2, 'PAIN'), (3, 'INFECTION');
INSERT INTO PharmaIndication (PharmaCode, IndicationCode) VALUES (1, 1), (1, 2), (2, 2), (3, 3), (4, 3), (6, 2);
INSERT INTO GenericName (Code, Name, Company, Composition, Dosage) VALUES
  (1, 'CROCIN', 3, 'PARACETAMOL 500 MG', '1 TAB SOS'),
  (2, 'CALPOL', 3, 'PARACETAMOL 250 MG/5 ML', '5 ML TDS'),
  (3, 'BRUFEN', 1, 'IBUPROFEN 400 MG', '1 TAB BD'),
  (4, 'AUGMENTIN', 3, 'AMOXYCILLIN 500 MG + CLAVULANIC ACID 125 MG', '1 TAB BD'),
  (5, 'MOXCLAV', 2, 'AMOXYCILLIN 500 MG + CLAVULANIC ACID 125 MG', '1 TAB BD'),
  (6, 'NOVAMOX', 1, 'AMOXYCILLIN 500 MG', '1 CAP TDS'),
  (7, 'WARF', 1, 'WARFARIN 5 MG', '1 TAB OD'),
  (8, 'ECOSPRIN', 2, 'ASPIRIN 75 MG', '1 TAB OD'),
  (9, 'COMBIFLAM', 2, 'IBUPROFEN 400 MG + PARACETAMOL 325 MG', '1 TAB TDS'),
  (10, 'GLYCOMET', 2, 'METFORMIN 500 MG', '1 TAB BD');
INSERT INTO GenericDsgFm (GenericCode, DsgFmCode, Remark) VALUES (1, 1, '1 TAB TDS AFTER FOOD'), (1, 2, ''),
  (2, 2, ''), (3, 1, ''), (4, 1, ''), (5, 1, ''), (6, 1, ''), (7, 1, ''), (8, 1, ''), (9, 1, ''), (10, 1, '');
INSERT INTO GenericPharma (GenericCode, PharmaCode) VALUES (1, 1), (2, 1), (3, 2), (4, 3), (4, 4), (5, 4), (5, 3),
  (6, 3), (7, 5), (8, 6), (9, 2), (9, 1), (10, 7);
INSERT INTO GenericGroup (GenericCode, GroupCode) VALUES (1, 1), (2, 1), (3, 1), (4, 2), (5, 2), (6, 2), (8, 1),
  (9, 1), (10, 3);
-- Safety: 1 Pregnancy, 2 Lactation, 3 Paediatrics, 4 Elderly, 5 Renal, 6 Liver, 7 Pulmonary.
INSERT INTO DrugSafety (PharmaCode, SafeFieldCode, SafetyCode, Remark) VALUES
  (1, 1, 1, ''), (1, 2, 1, ''), (1, 3, 1, ''), (1, 4, 1, ''), (1, 5, 1, ''), (1, 6, 4, 'REDUCE DOSE'), (1, 7, 1, ''),
  (2, 1, 2, 'AVOID IN THIRD TRIMESTER'), (2, 2, 1, ''), (2, 3, 4, ''), (2, 4, 4, ''), (2, 5, 2, ''), (2, 6, 4, ''),
  (2, 7, 3, 'MAY WORSEN ASTHMA'),
  (3, 1, 1, ''), (3, 2, 1, ''), (3, 3, 1, ''), (3, 4, 1, ''), (3, 5, 4, ''), (3, 6, 1, ''), (3, 7, 1, ''),
  (4, 1, 1, ''), (4, 2, 1, ''), (4, 3, 1, ''), (4, 4, 1, ''), (4, 5, 4, ''), (4, 6, 4, ''), (4, 7, 1, ''),
  (5, 1, 5, 'TERATOGENIC'), (5, 2, 1, ''), (5, 3, 6, ''), (5, 4, 4, ''), (5, 5, 4, ''), (5, 6, 2, ''), (5, 7, 1, ''),
  (7, 1, 1, ''),
  (6, 1, 6, ''), (6, 2, 4, ''), (6, 3, 2, 'REYE SYNDROME'), (6, 4, 4, ''), (6, 5, 4, ''), (6, 6, 4, ''), (6, 7, 3, '');
INSERT INTO InteractionType (Code, Name) VALUES (1, 'RISK OF BLEEDING'), (2, 'REDUCED EFFECT');
INSERT INTO Interaction (PharmaCode, PharmaCodeInt, IntTypeCode) VALUES (5, 6, 1), (6, 5, 1), (5, 2, 1), (2, 5, 1),
  (2, 6, 2), (6, 2, 2);
INSERT INTO Symbols (Code, Name) VALUES (1, '1-0-1'), (2, '1-1-1'), (3, 'SOS');
INSERT INTO DsgRemark (Code, Name) VALUES (1, 'AFTER FOOD'), (2, 'BEFORE FOOD');
INSERT INTO DrugGroup (Code, Name) VALUES (1, 'PENICILLINS'), (2, 'NSAIDS');
INSERT INTO PharmaGroup (PharmaCode, DrugGroup) VALUES (3, 1), (2, 2), (6, 2);
INSERT INTO AgeGroup (Code, Name) VALUES (1, '10 YEARS'), (2, 'CHILDHOOD');
INSERT INTO City (Code, Name) VALUES (1, 'LUCKNOW'), (2, 'KANPUR');
INSERT INTO Allergies (Code, Name) VALUES (1, 'DUST'), (2, 'POLLEN');
INSERT INTO Relation (Code, Relation) VALUES (1, 'FATHER'), (2, 'MOTHER');
INSERT INTO Personal (Code, Name, PUnit, Quantative) VALUES (1, 'SMOKING', 'CIGARETTES A DAY', 1), (2, 'VEGETARIAN', '', 0);
INSERT INTO Disease (Code, Name, DiseaseSex, DiseaseCategory) VALUES (1, 'PEPTIC ULCER', 'B', 0),
  (2, 'ASTHMA', 'B', 7), (3, 'PREECLAMPSIA', 'F', 1), (4, 'BENIGN PROSTATIC HYPERPLASIA', 'M', 0),
  (5, 'CHRONIC KIDNEY DISEASE', 'B', 5), (6, 'FEBRILE SEIZURE', 'B', 3);
INSERT INTO Physical (Code, Name, EVisible) VALUES (1, 'PALLOR', 1), (2, 'ICTERUS', 1), (3, 'CYANOSIS', 0);
INSERT INTO Complaints (Code, Name) VALUES (1, 'FEVER'), (2, 'COUGH'), (3, 'HEADACHE');
INSERT INTO Surgery (Code, Name) VALUES (1, 'APPENDICECTOMY'), (2, 'TONSILLECTOMY');
INSERT INTO DiseaseDrug (DiseasesCode, DrugCode, Notes) VALUES (1, 2, 'MAY CAUSE BLEEDING'), (1, 6, '');
INSERT INTO Patient (Code, Name, father, Sex, BirthDate, Blood, Rh, PHeight, PWeight) VALUES
  (1, 'RAM KUMAR', 'SHYAM KUMAR', 'M', '1980-05-10', 'B', '+', 170, 70),
  (2, 'SITA DEVI', 'RAM LAL', 'F', '1995-03-02', 'O', '+', 158, 55),
  (3, 'ANU', 'RAKESH', 'F', '2020-01-01', 'A', '+', 0, 0),
  (4, 'GOPAL DAS', 'HARI DAS', 'M', '1950-01-01', 'AB', '-', 165, 60);
INSERT INTO Investigation (Code, Name) VALUES (1, 'HAEMOGLOBIN'), (2, 'BLOOD SUGAR (FASTING)'),
  (3, 'SERUM CREATININE');
INSERT INTO InvDiseases (DiseasesCode, InvestigationCode) VALUES (1, 1), (5, 3);
INSERT INTO DiseaseInv (DiseasesCode, InvestigationCode, SafeFieldCode) VALUES (5, 2, 5), (5, 1, 1);
